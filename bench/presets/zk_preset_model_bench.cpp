// Loading and change notices of the preset model against the number of presets. Time per item must not
// grow with the number: the complexity that is printed at the end is N.
#include "ZCutoutPresetItemModel.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

class Item : public IZkAbstractMediaItem
{
public:
    explicit Item(qint64 id)
        : m_id(id)
    { }
    qint64 id() const override { return m_id; }
    QString slug() const override { return QStringLiteral("slug-%1").arg(m_id); }
    QString name() const override { return QStringLiteral("Preset %1").arg(m_id); }
    QString thumbnailPath() const override { return QString(); }
    bool needsDownload() const override { return false; }

private:
    qint64 m_id;
};

class Media : public IZkAbstractMedia
{
public:
    explicit Media(qint64 id)
        : m_item(id)
    { }
    int kind() const override { return ZKVBLMODEL::PresetMedia; }
    QString name() const override { return m_item.name(); }
    IZkAbstractMediaItem *mediaItem() const override { return const_cast<Item *>(&m_item); }

private:
    Item m_item;
};

class Folder : public IZkFolderMedia
{
public:
    explicit Folder(qint64 count)
    {
        for (qint64 id = 1; id <= count; ++id) {
            m_owned.push_back(std::make_unique<Media>(id));
            m_medias.append(m_owned.back().get());
        }
    }
    int kind() const override { return ZKVBLMODEL::FolderMedia; }
    QString name() const override { return QStringLiteral("subject_smart_cutout_preset"); }
    IZkAbstractMediaItem *mediaItem() const override { return nullptr; }
    int loadState() const override { return ZKVBLMODEL::zkmsLoaded; }
    bool needsLoadAgain() const override { return false; }
    QVector<IZkAbstractMedia *> medias(bool) const override { return m_medias; }

private:
    std::vector<std::unique_ptr<Media>> m_owned;
    QVector<IZkAbstractMedia *> m_medias;
};

void loadItems(benchmark::State &state)
{
    const Folder folder(state.range(0));
    ZCutoutPresetItemModel model(nullptr);
    for (auto _ : state)
        model.load(&folder);
    state.SetComplexityN(state.range(0));
}

void changeNotices(benchmark::State &state)
{
    Folder folder(state.range(0));
    const QVector<IZkAbstractMedia *> medias = folder.medias(true);
    ZCutoutPresetItemModel model(nullptr);
    model.setFolder(&folder);
    model.load(&folder);
    qint64 notices = 0;
    QObject::connect(&model, &QAbstractItemModel::dataChanged, [&notices] { ++notices; });
    for (auto _ : state) {
        for (IZkAbstractMedia *media : medias)
            model.onItemDataChangedEvent(media);
    }
    if (notices != state.iterations() * state.range(0))
        state.SkipWithError("a notice was lost");
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(loadItems)->Arg(2500)->Arg(5000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(changeNotices)->Arg(2500)->Arg(5000)->Arg(10000)->Complexity(benchmark::oN);

BENCHMARK_MAIN();
