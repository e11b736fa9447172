// The shortest walk that still shows what a long one showed.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "random_walk/Walk.h"

namespace velmoor::walk {

// Where the steps lead; nothing of `ignored` is looked for. `folder` is emptied before and after.
[[nodiscard]] std::vector<Violation> Replay(const std::string& folder,
                                            const std::vector<Step>& steps,
                                            const std::set<std::string>& ignored);

// Leaves out steps, then shortens values, as long as a violation of `kind` comes first.
[[nodiscard]] std::vector<Step> Shrink(const std::string& folder, std::vector<Step> steps,
                                       const std::string& kind,
                                       const std::set<std::string>& ignored);

}  // namespace velmoor::walk
