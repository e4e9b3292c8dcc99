// What a source of presets offers.
#pragma once

#include "ZkPresetRecords.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace zk::datamodel {

struct CatalogueItem
{
    QString slug; // at most 64 of a-z, 0-9 and '-'; unique
    QString name;
    QStringList folder; // names from the root of the category down; not empty
    int version = 1;
    storage::Resource package; // url, sha256 and size
    storage::Resource thumbnail;
};

// As a file:
//   {"format": 1, "version": 7,
//    "folders": ["Cutout/subject_smart_cutout_preset"],
//    "items": [{"slug": "glow", "name": "Glow", "folder": "Cutout/subject_smart_cutout_preset",
//      "version": 1, "package": {"url": "packages/glow.json", "size": 321, "sha256": "..."},
//      "thumbnail": {...}}]}
// Folders are listed for their order. Addresses are relative to the catalogue's.
struct Catalogue
{
    int version = 0; // of the contents, for people and logs
    QVector<QStringList> folders;
    QVector<CatalogueItem> items;

    // All or nothing: one wrong entry makes the whole catalogue wrong, and *error (may be null)
    // names it. An address must be http or https, and not less safe than `address`.
    static bool
    fromJson(const QByteArray &json, const QUrl &address, Catalogue *catalogue, QString *error);
    QByteArray toJson() const;
};

// The folder that the cutout presets of the program are in.
QStringList cutoutPresetFolder();

} // namespace zk::datamodel
