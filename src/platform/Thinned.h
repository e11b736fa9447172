// Samples of a line that has more of them than can be drawn.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace velmoor {

// The samples of a range, all of them where they are no more than about `most`; else of each group
// the least and the greatest, in their order, so that no peak is lost. `valueOf` gives what is
// drawn of a sample.
template <typename Iterator, typename ValueOf>
auto Thinned(Iterator first, Iterator last, int most, ValueOf valueOf) {
  using Sample = typename std::iterator_traits<Iterator>::value_type;
  const auto count = static_cast<std::size_t>(last - first);
  // Two samples stand for a group.
  const std::size_t group = 2 * count / static_cast<std::size_t>(std::max(most, 2)) + 1;
  if (group <= 2) return std::vector<Sample>(first, last);
  std::vector<Sample> thinned;
  while (first != last) {
    const auto end = first + std::min(last - first, static_cast<std::ptrdiff_t>(group));
    auto [least, greatest] = std::minmax_element(
        first, end, [&](const Sample& a, const Sample& b) { return valueOf(a) < valueOf(b); });
    if (greatest < least) std::swap(least, greatest);
    thinned.push_back(*least);
    if (least != greatest) thinned.push_back(*greatest);
    first = end;
  }
  return thinned;
}

}  // namespace velmoor
