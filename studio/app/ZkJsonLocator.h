// Finds the line of a value in a JSON text, for messages about it.
#pragma once

#include <QByteArray>
#include <QString>

namespace zk::app {

// The line, from 1, of the value at a path such as "strokes[2].points[0]", or of the innermost value on
// the way to it that exists. The text must be valid JSON.
int jsonLineOf(const QByteArray &text, const QString &path);

// The line, from 1, of a byte offset.
int jsonLineAt(const QByteArray &text, int offset);

} // namespace zk::app
