// velmoorctl check: the values of a project that nobody has answered for.
#pragma once

namespace velmoor {

struct Context;

// False: there are any.
bool Check(const Context& context);

}  // namespace velmoor
