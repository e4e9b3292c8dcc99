// Where results of erasing are written.
#pragma once

#include <QSet>
#include <QString>

namespace zk::app {

// Beside the media, or, where nothing can be written, in a folder of the program's own. Without a suffix;
// no file has that name, whatever its suffix, nor is it one of the reserved ones.
QString erasedFileFor(const QString &mediaPath, const QSet<QString> &reserved);
// The same of a file that has one, to be reserved.
QString withoutSuffix(const QString &path);

} // namespace zk::app
