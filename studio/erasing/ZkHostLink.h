// Private to this folder.
#pragma once

#include <QJsonObject>
#include <QString>

#include <memory>

namespace zk::erasing {

// The worker's link to the process that started it: lines of JSON to its standard output. The other end
// of its standard input closes when the host dies. Then isHostGone() is true, and a worker that does not
// come to its end within some seconds is ended, and its folder removed.
class HostLink
{
public:
    // Once in a process.
    explicit HostLink(const QString &folder);
    ~HostLink();

    void send(const QJsonObject &message);
    // 0..100 of that stage; repeated values are not sent.
    void sendProgress(int stage, int percent);
    bool isHostGone() const;
    // Until the host has taken the result. False when it died first.
    bool waitUntilTaken() const;

private:
    Q_DISABLE_COPY(HostLink)
    struct State;

    static void watch(const std::shared_ptr<State> &state);

    const std::shared_ptr<State> m_state; // the watching thread outlives the link
    int m_stage = -1;
    int m_percent = -1;
};

// Messages between the two.
namespace message {
const QLatin1String event("event");
const QLatin1String progress("progress");
const QLatin1String stage("stage");
const QLatin1String percent("percent");
const QLatin1String error("error");
const QLatin1String cause("cause");
const QLatin1String text("text");
const QLatin1String done("done");
const QLatin1String note("note");
constexpr char taken[] = "taken\n";
enum Stage { Preparing, Erasing, Finishing };
} // namespace message

} // namespace zk::erasing
