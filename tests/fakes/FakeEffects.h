// A clip with its media, its undoable effects and its segmentation service.
#pragma once

#include "FakeTimeline.h"

#include "datamodel/ZkSmartKeyingEditing.h"

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

class SmartKeyingService : public IZkSmartKeyingService
{
public:
    explicit SmartKeyingService(Timeline *timeline)
        : m_timeline(timeline)
    { }
    void setEnabled(bool on) override
    {
        note("service.setEnabled", on);
        enabled = on;
        m_timeline->report({ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData});
    }
    bool isEnabled() const override { return enabled; }
    ZKSMARTKEYING::ZkSegmentWorkMode workMode() const override { return mode; }
    int maskItemCount() const override { return items; }
    bool isTracked() const override { return tracked; }
    bool isEraseEnabled(qint64 frame) const override { return frame == erasableFrame; }
    bool overlapsMask(const QImage &, qint64 frame) const override
    {
        return overlaps && frame == erasableFrame;
    }
    int minimumPenWidth(const QSize &shown) const override { return qMax(1, shown.width() / 100); }
    void reset() override
    {
        note("service.reset");
        items = 0;
        tracked = false;
        m_timeline->undo.clearHistory();
    }
    void setPreviewType(ZKSMARTKEYING::ZkPreviewType type) override { m_previewType = type; }
    ZKSMARTKEYING::ZkPreviewType previewType() const override { return m_previewType; }
    void setMaskRegionColor(const QColor &color) override { m_color = color; }
    QColor maskRegionColor() const override { return m_color; }
    void setMaskRegionAlpha(int alpha) override { m_alpha = alpha; }
    int maskRegionAlpha() const override { return m_alpha; }
    void setMaskInverted(bool on) override { m_inverted = on; }
    bool isMaskInverted() const override { return m_inverted; }

    bool enabled = false;
    ZKSMARTKEYING::ZkSegmentWorkMode mode = ZKSMARTKEYING::EditingMode;
    int items = 0;
    bool tracked = false;
    qint64 erasableFrame = -1;
    bool overlaps = true;

private:
    Timeline *m_timeline;
    ZKSMARTKEYING::ZkPreviewType m_previewType = ZKSMARTKEYING::InteractivePreview;
    QColor m_color;
    int m_alpha = 255;
    bool m_inverted = false;
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
        return type == ZKSMARTKEYING::SmartCutout ? &cutout : &erasing;
    }

    int clipType = ZKTIMELINE::VideoClip;
    bool hasSource = true;
    QString path = QStringLiteral("/media/clip.MP4");
    bool gif = false;
    mutable Timeline line;
    mutable EffectList list {&line};
    mutable SmartKeyingService cutout {&line};
    mutable SmartKeyingService erasing {&line};
};

} // namespace zk::fake
