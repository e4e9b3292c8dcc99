#include "ZkHostLink.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace zk::erasing {

namespace {

constexpr std::chrono::seconds grace(5);
constexpr int hostGoneCode = 3;

} // namespace

struct HostLink::State
{
    QString folder;
    std::mutex mutex;
    std::condition_variable changed;
    bool isTaken = false;
    bool isGone = false;
    bool hasEnded = false;
};

HostLink::HostLink(const QString &folder)
    : m_state(std::make_shared<State>())
{
#ifdef SIGPIPE
    // A dead host does not read any more: that must not end this process before it has cleaned up.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    m_state->folder = folder;
    // It sleeps in a read that nothing portable wakes: it ends with the process.
    std::thread([state = m_state] { watch(state); }).detach();
}

HostLink::~HostLink()
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->hasEnded = true;
    m_state->changed.notify_all();
}

void HostLink::watch(const std::shared_ptr<State> &state)
{
    QFile input;
    char byte = 0;
    const bool isOpen = input.open(stdin, QIODevice::ReadOnly | QIODevice::Unbuffered);
    const bool isTaken = isOpen && input.read(&byte, 1) == 1;
    std::unique_lock<std::mutex> lock(state->mutex);
    state->isTaken = isTaken;
    state->isGone = !isTaken;
    state->changed.notify_all();
    if (isTaken || state->changed.wait_for(lock, grace, [&] { return state->hasEnded; }))
        return;
    QDir(state->folder).removeRecursively();
    std::_Exit(hostGoneCode);
}

void HostLink::send(const QJsonObject &message)
{
    const QByteArray line = QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fflush(stdout);
}

void HostLink::sendProgress(int stage, int percent)
{
    if (stage == m_stage && percent == m_percent)
        return;
    m_stage = stage;
    m_percent = percent;
    send({{message::event, message::progress},
          {message::stage, stage},
          {message::percent, percent}});
}

bool HostLink::isHostGone() const
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->isGone;
}

bool HostLink::waitUntilTaken() const
{
    std::unique_lock<std::mutex> lock(m_state->mutex);
    m_state->changed.wait(lock, [this] { return m_state->isTaken || m_state->isGone; });
    return m_state->isTaken;
}

} // namespace zk::erasing
