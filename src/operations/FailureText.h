// The words of an operation that failed: the given ones first, then why, then what now.
#pragma once

#include <string>

namespace velmoor {

class clsHX7Project;

// The latest failure of the link is of an older operation: forgets it, so that this one's causes
// are its own.
void ForgetFailures();

// `given`, and behind it, each after an empty line, what was under way and why it failed, as far as
// the link knows since ForgetFailures, and `now`.
[[nodiscard]] std::string FailureText(const std::string& given, const std::string& now = {});

// "5 items stay on offer (Jog table): Download New completes it."; empty where nothing is.
[[nodiscard]] std::string OfferText(clsHX7Project& project);

}  // namespace velmoor
