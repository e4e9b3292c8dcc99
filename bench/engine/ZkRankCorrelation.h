#pragma once

#include <vector>

namespace zk::bench {

// Spearman's: 1 when both rise together, -1 when one falls as the other rises, 0 when they have nothing to do
// with each other or one of them never changes.
double rankCorrelation(const std::vector<double> &a, const std::vector<double> &b);

} // namespace zk::bench
