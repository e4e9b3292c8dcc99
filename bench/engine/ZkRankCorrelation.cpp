#include "ZkRankCorrelation.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace zk::bench {

namespace {

// Equal values share the mean of their ranks. The mean of all ranks is taken off.
std::vector<double> centredRanks(const std::vector<double> &values)
{
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return values[a] < values[b];
    });
    std::vector<double> ranks(values.size());
    for (std::size_t first = 0; first < order.size();) {
        std::size_t end = first;
        while (end < order.size() && values[order[end]] == values[order[first]])
            ++end;
        const double rank = 0.5 * double(first + end) - 0.5 * double(order.size());
        for (; first < end; ++first)
            ranks[order[first]] = rank;
    }
    return ranks;
}

} // namespace

double rankCorrelation(const std::vector<double> &a, const std::vector<double> &b)
{
    const std::vector<double> x = centredRanks(a), y = centredRanks(b);
    const auto product = [](const std::vector<double> &p, const std::vector<double> &q) {
        return std::inner_product(p.begin(), p.end(), q.begin(), 0.0);
    };
    const double spread = std::sqrt(product(x, x) * product(y, y));
    return spread > 0.0 ? product(x, y) / spread : 0.0;
}

} // namespace zk::bench
