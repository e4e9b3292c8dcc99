#include "ZkTestMain.h"

#include <QLocale>
#include <QMutex>
#include <QTemporaryDir>

#include <cstdio>

namespace zk::test {

namespace {

struct Expectation
{
    int id;
    QRegularExpression pattern;
    bool seen;
};

QMutex mutex;
QVector<Expectation> expectations;
int nextId = 0;
int unexpected = 0;
QtMessageHandler previousHandler = nullptr;
QtMessageHandler filteredHandler = nullptr;

bool isExpected(const QString &text)
{
    for (Expectation &expectation : expectations) {
        if (expectation.pattern.match(text).hasMatch()) {
            expectation.seen = true;
            return true;
        }
    }
    return false;
}

void countMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        QMutexLocker lock(&mutex);
        ++unexpected;
        std::fprintf(stderr, "unexpected message: %s\n", qPrintable(text));
    }
    if (previousHandler)
        previousHandler(type, context, text);
}

// Stands above QtTest's handler while something is expected.
void filterMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    QtMessageHandler handler = nullptr;
    {
        QMutexLocker lock(&mutex);
        if (!isExpected(text))
            handler = filteredHandler;
    }
    if (handler)
        handler(type, context, text);
}

} // namespace

ExpectedMessage::ExpectedMessage(const QString &pattern)
{
    QMutexLocker lock(&mutex);
    m_id = nextId++;
    if (expectations.isEmpty())
        filteredHandler = qInstallMessageHandler(filterMessage);
    expectations.append({m_id, QRegularExpression(pattern), false});
}

ExpectedMessage::~ExpectedMessage()
{
    QMutexLocker lock(&mutex);
    for (int i = 0; i < expectations.size(); ++i) {
        if (expectations.at(i).id == m_id) {
            expectations.removeAt(i);
            break;
        }
    }
    if (expectations.isEmpty())
        qInstallMessageHandler(filteredHandler);
}

bool ExpectedMessage::seen() const
{
    QMutexLocker lock(&mutex);
    for (const Expectation &expectation : qAsConst(expectations)) {
        if (expectation.id == m_id)
            return expectation.seen;
    }
    return false;
}

int runMain(int argc, char **argv, const std::function<int(int, char **)> &body)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Outside a login session, as on build machines, Qt warns that it has no runtime directory.
    const QTemporaryDir runtimeDir;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", runtimeDir.path().toLocal8Bit());
    qputenv("QT_HASH_SEED", "0");
    qSetGlobalQHashSeed(0);
    QLocale::setDefault(QLocale::c());
    // Inside test functions QtTest's own handler takes over; CTest fails a test for what that prints.
    previousHandler = qInstallMessageHandler(countMessage);
    const int result = body(argc, argv);
    qInstallMessageHandler(previousHandler);
    QMutexLocker lock(&mutex);
    if (result == 0 && unexpected > 0) {
        std::fprintf(stderr, "%d unexpected warnings or critical messages\n", unexpected);
        return 1;
    }
    return result;
}

} // namespace zk::test
