#include "ZkStudioEffect.h"

#include "ZkStudioEffectList.h"

#include <atomic>

namespace {

qint64 nextEffectId()
{
    static std::atomic<qint64> last {0};
    return ++last;
}

} // namespace

ZkEffectPtr ZkStudioEffect::plainCutout()
{
    return ZkEffectPtr(new ZkStudioEffect(zk::effects::Look(), QString()));
}

ZkEffectPtr
ZkStudioEffect::fromLookJson(const QByteArray &json, const QString &slug, QString *error)
{
    zk::effects::Look look;
    if (!zk::effects::Look::fromJson(json, &look, error))
        return {};
    return ZkEffectPtr(new ZkStudioEffect(look, slug));
}

ZkStudioEffect::ZkStudioEffect(const zk::effects::Look &look, const QString &slug)
    : m_id(nextEffectId())
    , m_look(look)
    , m_descriptor(ZKTIMELINE::SmartKeyingEffect, slug)
{ }

void ZkStudioEffect::setEnabled(bool enabled)
{
    if (enabled == m_isEnabled)
        return;
    if (m_list)
        m_list->changeEnabled(this, enabled);
    else
        m_isEnabled = enabled;
}

ZkEffectPtr ZkStudioEffect::createInstance() const
{
    auto instance = QSharedPointer<ZkStudioEffect>::create(m_look, m_descriptor.slug());
    instance->m_isEnabled = m_isEnabled;
    return instance;
}
