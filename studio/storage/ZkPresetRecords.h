// The rows of the preset library.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace zk::storage {

// The files of an item.
enum class ResourceKind {
    Thumbnail = 0,
    Package = 2, // the description of the effect
};

// Who the item came from. Each source is the authority for its own items.
enum class ItemOrigin {
    Builtin = 0, // the program
    Server = 1, // a resource server
};

// One file: what is offered, and what of it lies on disk. The two may differ: an item stays usable
// with its old file until the new one is complete.
struct Resource
{
    QUrl url; // empty: the program itself can make it
    QByteArray sha256; // lower-case hex, of the offered file
    qint64 size = 0; // bytes, of the offered file

    QString file; // relative to the library's directory; empty: not on disk
    QByteArray fileSha256;
    qint64 fileSize = 0;

    bool isOnDisk() const { return !file.isEmpty(); }
    bool hasUpdate() const { return isOnDisk() && fileSha256 != sha256; }
};

struct PresetCategory
{
    int id = 0;
    QString name;
};

struct PresetFolder
{
    qint64 id = 0;
    int category = 0;
    qint64 parent = 0; // 0: directly below the category
    QString name; // unique below its parent
    int position = 0; // order among its siblings
};

struct PresetItem
{
    qint64 id = 0; // positive; 0: not stored yet. Never used again after a removal
    QString slug; // unique in the library
    QString name;
    int kind = 0;
    qint64 folder = 0;
    int version = 1;
    int position = 0; // order among those of its folder and origin
    ItemOrigin origin = ItemOrigin::Builtin;
    Resource thumbnail;
    Resource package;

    Resource &resource(ResourceKind which)
    {
        return which == ResourceKind::Package ? package : thumbnail;
    }
    const Resource &resource(ResourceKind which) const
    {
        return which == ResourceKind::Package ? package : thumbnail;
    }
};

} // namespace zk::storage
