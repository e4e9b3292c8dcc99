#pragma once

#include "ZkDataModel.h"
#include "ZkLook.h"

#include <QByteArray>

class ZkStudioEffectList;

class ZkStudioEffectDescriptor : public IZkEffectDescriptor
{
public:
    ZkStudioEffectDescriptor(int type, const QString &slug)
        : m_type(type)
        , m_slug(slug)
    { }

    int type() const override { return m_type; }
    QString slug() const override { return m_slug; }

private:
    const int m_type;
    const QString m_slug;
};

// The cutout effect (type 55) with the look that it gives the object. GUI thread only.
class ZKDATAMODEL_EXPORT ZkStudioEffect : public IZkEffect
{
public:
    // The plain cutout, of no preset.
    static ZkEffectPtr plainCutout();
    // The cutout of a preset, enabled. Null when the JSON describes no look; *error (may be null) then
    // says what is wrong with it.
    static ZkEffectPtr fromLookJson(const QByteArray &json, const QString &slug, QString *error);

    ZkStudioEffect(const zk::effects::Look &look, const QString &slug);

    const zk::effects::Look &look() const { return m_look; }
    QByteArray lookJson() const { return m_look.toJson(); }

    // Sets the state without an undo step and without a report.
    void restoreEnabled(bool enabled) { m_isEnabled = enabled; }
    // The list that the effect is in; null: none.
    ZkStudioEffectList *list() const { return m_list; }
    void setList(ZkStudioEffectList *list) { m_list = list; }

    qint64 id() const override { return m_id; }
    const IZkEffectDescriptor *descriptor() const override { return &m_descriptor; }
    bool isEnabled() const override { return m_isEnabled; }
    void setEnabled(bool enabled) override;
    ZkEffectPtr createInstance() const override;

private:
    Q_DISABLE_COPY(ZkStudioEffect)

    const qint64 m_id;
    const zk::effects::Look m_look;
    const ZkStudioEffectDescriptor m_descriptor;
    ZkStudioEffectList *m_list = nullptr;
    bool m_isEnabled = true;
};
