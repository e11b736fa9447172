// The commands of velmoorctl that talk to the amplifier, or compare.
#pragma once

namespace velmoor {

struct Context;

// Each returns false after a failure, of which the user was told; Compare and Diff also when they
// found a difference.
[[nodiscard]] bool Info(const Context& context);
[[nodiscard]] bool Scan(const Context& context);
[[nodiscard]] bool Download(const Context& context);
[[nodiscard]] bool Upload(const Context& context);
[[nodiscard]] bool Reset(const Context& context);
[[nodiscard]] bool Compare(const Context& context);
[[nodiscard]] bool Diff(const Context& context);

}  // namespace velmoor
