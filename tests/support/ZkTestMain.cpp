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

void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        QMutexLocker lock(&mutex);
        if (!isExpected(text)) {
            ++unexpected;
            std::fprintf(stderr, "unexpected message: %s\n", qPrintable(text));
        }
    }
    if (previousHandler)
        previousHandler(type, context, text);
}

} // namespace

ExpectedMessage::ExpectedMessage(const QString &pattern)
{
    QMutexLocker lock(&mutex);
    m_id = nextId++;
    expectations.append({m_id, QRegularExpression(pattern), false});
}

ExpectedMessage::~ExpectedMessage()
{
    QMutexLocker lock(&mutex);
    for (int i = 0; i < expectations.size(); ++i) {
        if (expectations.at(i).id == m_id) {
            expectations.removeAt(i);
            return;
        }
    }
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

int unexpectedMessages()
{
    QMutexLocker lock(&mutex);
    return unexpected;
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
    // QtTest's own handler takes over inside a test and hands messages on to nobody, so the count is
    // kept by a handler that is installed before it and asked again afterwards.
    previousHandler = qInstallMessageHandler(handleMessage);
    const int result = body(argc, argv);
    qInstallMessageHandler(previousHandler);
    const int count = unexpectedMessages();
    if (result == 0 && count > 0) {
        std::fprintf(stderr, "%d unexpected warnings or critical messages\n", count);
        return 1;
    }
    return result;
}

} // namespace zk::test
