#pragma once

#include "ZkGlobal.h"

#include <QByteArray>
#include <QImage>
#include <QRect>
#include <QSize>

namespace zk::datamodel {

// An 8-bit mask of a frame, compressed without loss: the box around what is not 0. A value
// that shares its bytes with its copies; a default-constructed one is "no mask". Immutable otherwise,
// so any thread may hold and decode one.
class ZKDATAMODEL_EXPORT EncodedMatte
{
public:
    EncodedMatte() = default;
    // The image is best Format_Grayscale8; others are converted. Null images give "no mask".
    explicit EncodedMatte(const QImage &mask);
    // Of a frame of that size that is 0 but for the part, which lies within it. A null part: all is 0.
    static EncodedMatte ofPart(const QSize &size, const QPoint &at, const QImage &part);
    // What box(), objectPixels() and data() of another one said. False, and *matte is "no mask", when
    // that cannot be.
    static bool fromParts(const QSize &size,
                          const QRect &box,
                          int objectPixels,
                          const QByteArray &data,
                          EncodedMatte *matte);

    bool isNull() const { return m_size.isEmpty(); }
    QSize size() const { return m_size; } // of the frame
    // Whether no pixel is anything but 0.
    bool isEmpty() const { return m_box.isEmpty(); }
    bool hasAnything() const { return !isEmpty(); }
    // Pixels of at least 128: what the engine takes for the object.
    int objectPixels() const { return m_objectPixels; }
    bool hasObject() const { return m_objectPixels > 0; }
    int byteCount() const { return m_data.size(); }
    QRect box() const { return m_box; } // of the pixels that are not 0
    QByteArray data() const { return m_data; } // the box's pixels, compressed

    // Format_Grayscale8 of the frame's size; null for "no mask" and for damaged data.
    QImage decoded() const;
    // The pixels of box() alone; null where decoded() is, and when the box is empty.
    QImage decodedBox() const;

    // The same bytes, not merely the same pixels.
    bool isSharedWith(const EncodedMatte &other) const { return m_data.isSharedWith(other.m_data); }
    // The same pixels.
    friend bool operator==(const EncodedMatte &a, const EncodedMatte &b)
    {
        return a.m_size == b.m_size && a.m_box == b.m_box && a.m_data == b.m_data;
    }
    friend bool operator!=(const EncodedMatte &a, const EncodedMatte &b) { return !(a == b); }

private:
    QSize m_size;
    QRect m_box; // of the pixels that are not 0
    int m_objectPixels = 0;
    QByteArray m_data; // the box's pixels, compressed; empty when the box is
};

} // namespace zk::datamodel
