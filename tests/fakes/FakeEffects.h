// A clip with its media, its undoable effects and its segmentation service.
#pragma once

#include "FakeSegmentation.h"

namespace zk::fake {

class Effect : public IZkEffect, public IZkEffectDescriptor
{
public:
    explicit Effect(int type, const char *slug = "")
        : m_type(type)
        , m_slug(slug)
    { }
    qint64 id() const override { return m_id; }
    const IZkEffectDescriptor *descriptor() const override { return described ? this : nullptr; }
    bool isEnabled() const override { return enabled; }
    void setEnabled(bool on) override
    {
        note("effect.setEnabled", slug(), on);
        const auto set = [this](bool value) {
            enabled = value;
            if (timeline)
                timeline->report({ZKTIMELINE::EffectChange, ZKTIMELINE::EffectPropertyChanged});
        };
        if (timeline)
            timeline->undo.push(new Step([=] { set(on); }, [set, was = enabled] { set(was); }));
        else
            set(on);
    }
    ZkEffectPtr createInstance() const override
    {
        if (!instanceable)
            return ZkEffectPtr();
        const auto effect = QSharedPointer<Effect>::create(m_type, m_slug.constData());
        effect->enabled = enabled;
        return effect;
    }
    int type() const override { return m_type; }
    QString slug() const override { return QString::fromLatin1(m_slug); }

    Timeline *timeline = nullptr;
    bool enabled = true;
    bool described = true;
    bool instanceable = true;

private:
    static inline qint64 s_lastId = 0;

    int m_type;
    QByteArray m_slug;
    qint64 m_id = ++s_lastId;
};

class EffectList : public IZkEffectList
{
public:
    explicit EffectList(Timeline *timeline)
        : m_timeline(timeline)
    { }
    int count() const override { return effects.size(); }
    IZkEffect *effectAt(int index) const override { return effects.value(index).data(); }
    bool add(const ZkEffectPtr &effect) override
    {
        note("effects.add", effect->descriptor()->slug());
        static_cast<Effect *>(effect.data())->timeline = m_timeline;
        m_timeline->undo.push(new Step([=] { insert(effects.size(), effect); },
                                       [=] { remove(effects.indexOf(effect)); }));
        return true;
    }
    bool removeById(qint64 id) override
    {
        note("effects.removeById", id);
        for (int i = 0; i < effects.size(); ++i) {
            const ZkEffectPtr effect = effects.at(i);
            if (effect->id() == id) {
                m_timeline->undo.push(new Step([=] { remove(i); }, [=] { insert(i, effect); }));
                return true;
            }
        }
        return false;
    }
    QStringList slugs() const
    {
        QStringList texts;
        for (const ZkEffectPtr &effect : effects)
            texts += effect->descriptor() ? effect->descriptor()->slug() : QString();
        return texts;
    }

    QVector<ZkEffectPtr> effects;

private:
    void insert(int index, const ZkEffectPtr &effect)
    {
        effects.insert(index, effect);
        m_timeline->report({ZKTIMELINE::EffectChange, ZKTIMELINE::EffectAdded});
    }
    void remove(int index)
    {
        effects.remove(index);
        m_timeline->report({ZKTIMELINE::EffectChange, ZKTIMELINE::EffectRemoved});
    }

    Timeline *m_timeline;
};

class Clip : public IZkClip, public IZkMediaSource
{
public:
    explicit Clip(const char *timelineName)
        : line(timelineName)
    { }
    int type() const override { return clipType; }
    IZkMediaSource *source() const override
    {
        return hasSource ? const_cast<Clip *>(this) : nullptr;
    }
    QString filePath() const override { return path; }
    bool isAnimatedGif() const override { return gif; }
    IZkEffectList *effects() const override { return &list; }
    IZkTimeline *timeline() const override { return &line; }
    IZkSmartKeyingService *
    smartKeyingService(ZKSMARTKEYING::ZkSmartKeyingBusinessType type) const override
    {
        if (!segmentable)
            return nullptr;
        return type == ZKSMARTKEYING::SmartCutout ? &cutout : &erasing;
    }

    int clipType = ZKTIMELINE::VideoClip;
    bool hasSource = true;
    QString path = QStringLiteral("/media/clip.MP4");
    bool gif = false;
    bool segmentable = true;
    mutable Timeline line;
    mutable EffectList list {&line};
    mutable SmartKeyingService cutout {&line};
    mutable SmartKeyingService erasing {&line};
};

} // namespace zk::fake
