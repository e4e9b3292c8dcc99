// Writes items and their files into a preset library until it is killed. After every commit it says
// how many batches there are.
//   zk_storage_writer DIRECTORY
#include "ZkDurableFile.h"
#include "ZkPresetStore.h"

#include <QCoreApplication>

#include <cstdio>

using namespace zk::storage;

namespace {

constexpr int itemsPerBatch = 5;

bool writeBatch(PresetStore &store, int batch)
{
    PresetStore::Transaction transaction(store);
    const qint64 folder = store.ensureFolder(1, {QStringLiteral("batch %1").arg(batch)});
    for (int i = 0; i < itemsPerBatch; ++i) {
        const QByteArray bytes(2000 + 37 * batch + i, char('a' + i));
        PresetItem item;
        item.slug = QStringLiteral("item-%1-%2").arg(batch).arg(i);
        item.folder = folder;
        item.package.sha256 = sha256Of(bytes);
        item.package.size = bytes.size();
        const QString file = PresetStore::fileFor(item, ResourceKind::Package);
        if (!store.saveItem(&item) || !writeDurably(store.absolutePath(file), bytes)
            || !store.setFile(item.id, ResourceKind::Package, file))
            return false;
    }
    return transaction.commit();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    PresetStore store(QCoreApplication::arguments().value(1));
    store.open();
    if (!store.isOpen() || !store.saveCategory({1, QStringLiteral("Category")}))
        return 1;
    int batch = store.items().size() / itemsPerBatch;
    while (writeBatch(store, batch)) {
        std::printf("%d\n", ++batch);
        std::fflush(stdout);
    }
    std::fprintf(stderr, "%s\n", qPrintable(store.errorText()));
    return 1;
}
