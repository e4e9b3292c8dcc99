// What the presenter of the areas answers, against the number of areas. All queries are linear at most: the
// complexity that is printed at the end is N or 1.
#include "FakeEditController.h"

#include "presenters/ZkAIErasingCropSelectorPresenter.h"
#include "presenters/ZkAIErasingPresenter.h"

#include <benchmark/benchmark.h>

#include <QApplication>

namespace {

using Crops = ZkAIErasingCropSelectorPresenter;

// A workspace with areas in a grid, none over another.
class Workspace
{
public:
    explicit Workspace(qint64 count)
        : m_presenter(&m_clip)
    {
        auto &areas = zk::fake::EditController::living->clip.erasing.areas;
        for (int i = 0; i < count; ++i)
            areas.append({i, QRectF((i % 100) / 100., (i / 100) / 100., 0.009, 0.009)});
    }
    Crops *crops() const { return m_presenter.cropSelectorPresenter(); }

private:
    zk::fake::Clip m_clip {"project"};
    ZkAIErasingPresenter m_presenter;
};

template<typename Query>
void measure(benchmark::State &state, Query query)
{
    const Workspace workspace(state.range(0));
    const int last = static_cast<int>(state.range(0)) - 1;
    for (auto _ : state)
        benchmark::DoNotOptimize(query(workspace.crops(), last));
    if (workspace.crops()->getAllCropIds().size() != last + 1)
        state.SkipWithError("an area was lost");
    state.SetComplexityN(state.range(0));
}

void allIdsAndRects(benchmark::State &state)
{
    measure(state, [](const Crops *crops, int) {
        return crops->getAllCropIds().size() + crops->getAllCropRects().size();
    });
}

void hitTest(benchmark::State &state)
{
    // A corner that no area covers: all are looked at.
    measure(state,
            [](const Crops *crops, int) { return crops->getCropIdAtPixelPosition(1919, 1079); });
}

void oneCrop(benchmark::State &state)
{
    measure(state, [](Crops *crops, int last) {
        crops->setActiveCropId(crops->getActiveCropId() == last ? 0 : last);
        return crops->containsCropRect(last) && crops->hasCropRects()
            && crops->getCropCount() > last && !crops->getCropRect(last).isEmpty()
            && !crops->getNormalizedCropRect(last).isEmpty();
    });
}

} // namespace

BENCHMARK(allIdsAndRects)->Arg(1000)->Arg(2000)->Arg(4000)->Complexity();
BENCHMARK(hitTest)->Arg(1000)->Arg(2000)->Arg(4000)->Complexity();
BENCHMARK(oneCrop)->Arg(1000)->Arg(2000)->Arg(4000)->Complexity();

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ZkBaseLog::defaultLogger()->setMinimumLevel(ZKLOG::Error);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
