#include "simulator/memory/FactoryValues.h"

namespace velmoor {
namespace {

constexpr FactoryValue kValues[] = {
#include "FactoryValues.inc"
};

}  // namespace

std::span<const FactoryValue> FactoryValues() {
  return kValues;
}

}  // namespace velmoor
