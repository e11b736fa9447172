#include "simulator/FactoryValues.h"

namespace velmoor {
namespace {

constexpr FactoryValue kValues[] = {
#ifdef VELMOOR_CATALOGUE_FACTORY_VALUES
#include "FactoryValues.inc"
#else
    {"000", "0000", "0", "65535", FactoryKind::nibble},
    {"100", "40", "1", "2000", FactoryKind::decimal},
    {"101", "2000", "15", "51200", FactoryKind::decimal},
    {"102", "40", "1", "2000", FactoryKind::decimal},
    {"103", "0", "0", "20000", FactoryKind::decimal},
    {"202", "4", "1", "65535", FactoryKind::decimal},
    {"203", "1", "1", "65535", FactoryKind::decimal},
    {"401", "100", "0", "65535", FactoryKind::decimal},
    {"408", "0000", "0", "65535", FactoryKind::nibble},
    {"409", "2000", "50", "2000", FactoryKind::decimal},
    {"800", "1", "0", "7", FactoryKind::decimal},
    {"801", "0", "0", "2", FactoryKind::decimal},
    {"802", "1", "0", "1", FactoryKind::decimal},
    {"803", "0", "0", "15", FactoryKind::decimal},
    {"81D", "0", "-99999999", "99999999", FactoryKind::decimal},
    {"829", "00000000", "0", "99999999", FactoryKind::text8},
    {"82A", "00000000", "0", "99999999", FactoryKind::text8},
    {"82E", "0000", "0", "65535", FactoryKind::nibble},
    {"82F", "00000000", "0", "99999999", FactoryKind::text8},
    {"830", "00000000", "0", "99999999", FactoryKind::text8},
    {"833", "0", "0", "15", FactoryKind::decimal},
    {"834", "0", "0", "15", FactoryKind::decimal},
#endif
};

}  // namespace

std::span<const FactoryValue> FactoryValues() {
  return kValues;
}

}  // namespace velmoor
