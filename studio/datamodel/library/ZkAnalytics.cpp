#include "ZkAnalytics.h"

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QMutex>

#include <memory>

namespace zk::datamodel {

namespace {

Q_LOGGING_CATEGORY(log, "zk.studio.analytics")

struct Sink
{
    QMutex mutex;
    std::unique_ptr<QFile> file; // null: analytics are off
};

Sink &sink()
{
    static Sink theSink;
    return theSink;
}

// As a single JSON value. An object would sort its keys, so objects are put together by hand.
QByteArray json(const QVariant &value)
{
    const QJsonArray array {QJsonValue::fromVariant(value)};
    const QByteArray text = QJsonDocument(array).toJson(QJsonDocument::Compact);
    return text.mid(1, text.size() - 2);
}

QByteArray lineOf(const ZkTrackEvent &event)
{
    QByteArray properties;
    const auto pairs = event.properties();
    for (const auto &[key, value] : pairs) {
        if (!properties.isEmpty())
            properties += ',';
        properties += json(key) + ':' + json(value);
    }
    const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    return "{\"time\":" + json(time) + ",\"event\":" + json(event.name()) + ",\"properties\":{"
        + properties + "}}\n";
}

void write(const ZkTrackEvent &event)
{
    QMutexLocker locker(&sink().mutex);
    if (!sink().file)
        return;
    // One unbuffered write, so that lines of several programs do not mix.
    const QByteArray line = lineOf(event);
    if (sink().file->write(line) != line.size()) {
        qCWarning(log).noquote() << sink().file->fileName() << sink().file->errorString()
                                 << "- analytics are off";
        sink().file.reset();
    }
}

} // namespace

bool Analytics::switchOn(const QString &path, QString *error)
{
    auto file = std::make_unique<QFile>(path);
    const bool isOpen =
        file->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
    if (error)
        *error = isOpen ? QString() : file->errorString();
    if (!isOpen)
        file.reset();
    QMutexLocker locker(&sink().mutex);
    sink().file = std::move(file);
    return isOpen;
}

void Analytics::switchOff()
{
    QMutexLocker locker(&sink().mutex);
    sink().file.reset();
}

bool Analytics::isOn()
{
    QMutexLocker locker(&sink().mutex);
    return sink().file != nullptr;
}

} // namespace zk::datamodel

ZkTrackEvent::ZkTrackEvent(const QString &name)
    : m_name(name)
{ }

ZkTrackEvent::~ZkTrackEvent() = default;

void ZkTrackEvent::setProperty(const QString &key, const QVariant &value)
{
    for (QPair<QString, QVariant> &property : m_properties) {
        if (property.first == key) {
            property.second = value;
            return;
        }
    }
    m_properties.append({key, value});
}

void ZkTrackEvent::sendEvent() const
{
    zk::datamodel::write(*this);
}
