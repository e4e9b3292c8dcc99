// The presets that the program brings: their files are made, not fetched. Not public.
#pragma once

#include "ZkCatalogue.h"
#include "ZkLook.h"
#include "ZkPresetStore.h"

#include <QHash>

namespace zk::datamodel {

QByteArray packageOf(const effects::Look &look);
// A PNG.
QByteArray thumbnailOf(const effects::Look &look);

class BuiltinPresets
{
public:
    explicit BuiltinPresets(storage::PresetStore &store)
        : m_store(store)
    { }

    void setLooks(const QVector<effects::Look> &looks);
    // What they offer. A thumbnail whose look has not changed since the last import is taken as it
    // stands in the store, so that an ordinary start draws none.
    Catalogue catalogue() const;
    bool canMake(const storage::PresetItem &item) const;
    // Makes that file and records it. False, with the reason in store.errorText() or *error.
    bool make(const storage::PresetItem &item, storage::ResourceKind kind, QString *error);
    // Makes every file that is not on disk or not up to date. False when one could not be made.
    bool makeMissing(QString *error);

private:
    storage::Resource thumbnailOffer(const effects::Look &look, const QByteArray &package) const;

    storage::PresetStore &m_store;
    QVector<effects::Look> m_looks; // in the order of the library
    QHash<QString, int> m_indexes; // of m_looks, by slug
};

} // namespace zk::datamodel
