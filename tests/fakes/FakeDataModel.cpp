#include "FakeEditController.h"
#include "FakeMediaLibrary.h"

#include "datamodel/ZkTrackEvent.h"

namespace zk::fake {

EditController *EditController::living = nullptr;
ProjectManager *ProjectManager::living = nullptr;

QStringList &journal()
{
    static QStringList calls;
    return calls;
}

} // namespace zk::fake

using namespace zk::fake;

IZkSmartKeyingEditController *createSmartKeyingEditController()
{
    note("controller.create");
    EditController::living = new EditController;
    return EditController::living;
}

void releaseSmartKeyingEditController(IZkSmartKeyingEditController *controller)
{
    note("controller.release");
    EditController::living = nullptr;
    delete static_cast<EditController *>(controller);
}

// Types of the host are the host's to register: the functions that Qt keeps of them stay when a module that
// uses them is unloaded.
[[maybe_unused]] static const int mediaTypes[] = {qRegisterMetaType<IZkAbstractMedia *>(),
                                                  qRegisterMetaType<IZkAbstractMediaItem *>(),
                                                  qRegisterMetaType<IZkFolderMedia *>()};

IZkProjectManager::~IZkProjectManager() = default;

IZkProjectManager *IZkProjectManager::getInstance()
{
    return ProjectManager::living;
}

class ZkPlayheadConnector::Private
{
};

ZkPlayheadConnector::ZkPlayheadConnector() = default;
ZkPlayheadConnector::~ZkPlayheadConnector() = default;

void ZkPlayheadConnector::addPlayhead(IZkPlayhead *playhead, int role)
{
    note("connector.addPlayhead", static_cast<Playhead *>(playhead)->name(), role);
}

void ZkPlayheadConnector::clear()
{
    note("connector.clear");
}

ZkTrackEvent::ZkTrackEvent(const QString &name)
    : m_name(name)
{ }
ZkTrackEvent::~ZkTrackEvent() = default;

void ZkTrackEvent::setProperty(const QString &key, const QVariant &value)
{
    m_properties.append({key, value});
}

// Notes "event NAME key=value key=value ..."; a duration differs every time and is noted as such.
void ZkTrackEvent::sendEvent() const
{
    QString text = QStringLiteral("event ") + m_name;
    for (const auto &property : m_properties) {
        const bool timed = property.first == QLatin1String("duration")
            && property.second.type() == QVariant::LongLong && property.second.toLongLong() >= 0;
        text += QStringLiteral(" %1=%2").arg(
            property.first, timed ? QStringLiteral("N ms") : property.second.toString());
    }
    journal() += text;
}
