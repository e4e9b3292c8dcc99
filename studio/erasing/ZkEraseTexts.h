// Private to this folder: sentences for the user, which say what to do.
#pragma once

#include <QCoreApplication>

namespace zk::erasing {

class EraseTexts
{
    Q_DECLARE_TR_FUNCTIONS(EraseTexts)

public:
    static QString preparing();
    static QString erasing();
    static QString finishing();

    static QString cannotWriteBeside(const QString &output);
    static QString sourceIsGone(const QString &path);
    static QString sourceHasChanged(const QString &path);
    static QString isTooShort(const QString &path);
    static QString cannotReadFrame(const QString &path, qint64 frame);
    static QString damagedJob();
    static QString noMemory();
    static QString cannotStart(const QString &program, const QString &reason);
    // The worker ended without a word: it crashed, or somebody ended it.
    static QString endedUnexpectedly(bool isCrash, int code);
    static QString failed(const QString &reason);
};

} // namespace zk::erasing
