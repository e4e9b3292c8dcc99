#include "ZkEraseTexts.h"

#include <QDir>
#include <QFileInfo>

namespace zk::erasing {

QString EraseTexts::preparing()
{
    return tr("Preparing");
}

QString EraseTexts::erasing()
{
    return tr("Erasing");
}

QString EraseTexts::finishing()
{
    return tr("Finishing");
}

QString EraseTexts::cannotWriteBeside(const QString &output)
{
    return tr("The folder %1 cannot be written to, or its disk is full; free some space or choose "
              "another folder.")
        .arg(QDir::toNativeSeparators(QFileInfo(output).absolutePath()));
}

QString EraseTexts::sourceIsGone(const QString &path)
{
    return tr("%1 is no longer there; put it back and erase again.")
        .arg(QDir::toNativeSeparators(path));
}

QString EraseTexts::sourceHasChanged(const QString &path)
{
    return tr("%1 was changed after the objects were selected; check the selection and erase "
              "again.")
        .arg(QDir::toNativeSeparators(path));
}

QString EraseTexts::isTooShort(const QString &path)
{
    return tr("%1 does not have all the frames of the clip; check the file and erase again.")
        .arg(QDir::toNativeSeparators(path));
}

QString EraseTexts::cannotReadFrame(const QString &path, qint64 frame)
{
    return tr("Frame %1 of %2 cannot be read; check the file and erase again.")
        .arg(frame)
        .arg(QDir::toNativeSeparators(path));
}

QString EraseTexts::damagedJob()
{
    return tr("The eraser could not read what it is to do; erase again.");
}

QString EraseTexts::noMemory()
{
    return tr("There is not enough memory for frames of this size; close other programs and erase "
              "again.");
}

QString EraseTexts::cannotStart(const QString &program, const QString &reason)
{
    return tr("The eraser %1 cannot be started (%2); install the program again.")
        .arg(QDir::toNativeSeparators(program), reason);
}

QString EraseTexts::endedUnexpectedly(bool isCrash, int code)
{
    if (isCrash)
        return tr("The eraser was ended from outside or crashed (signal %1), perhaps because "
                  "memory "
                  "ran out; close other programs and erase again.")
            .arg(code);
    return tr("The eraser ended without a result (code %1); erase again.").arg(code);
}

QString EraseTexts::failed(const QString &reason)
{
    return tr("The eraser failed (%1); erase again, or select less.").arg(reason);
}

} // namespace zk::erasing
