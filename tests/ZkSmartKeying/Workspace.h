// A presenter on a fake host, with every log line and signal in the journal when a test asks for it.
#pragma once

#include "FakeEditController.h"
#include "FakeMediaLibrary.h"
#include "FakeMediaPlayer.h"
#include "ZkTestMain.h"

#include "presenters/ZkSmartKeyingPresenter.h"
#include "presets/ZCutoutPresetItemManager.h"
#include "presets/ZCutoutPresetItemModel.h"

#include <QMetaMethod>

using namespace zk::fake;

// Notes every signal of an object with its arguments.
class SignalJournal : public QObject
{
public:
    explicit SignalJournal(QObject *sender)
        : m_sender(sender)
    {
        const QMetaObject *const meta = sender->metaObject();
        const int offset = QObject::staticMetaObject.methodCount();
        for (int i = offset; i < meta->methodCount(); ++i) {
            // A signal with a default argument counts once.
            const QMetaMethod method = meta->method(i);
            if (method.methodType() == QMetaMethod::Signal
                && !(method.attributes() & QMetaMethod::Cloned))
                QMetaObject::connect(sender, i, this, offset + i, Qt::DirectConnection);
        }
    }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        id = QObject::qt_metacall(call, id, arguments);
        if (id < 0 || call != QMetaObject::InvokeMetaMethod)
            return id;
        const QMetaMethod method = m_sender->metaObject()->method(id);
        QStringList values;
        for (int i = 0; i < method.parameterCount(); ++i)
            values += text(QVariant(method.parameterType(i), arguments[i + 1]));
        QString line = QString::fromLatin1(method.name());
        if (!values.isEmpty())
            line += QLatin1Char('(') + values.join(QLatin1Char(',')) + QLatin1Char(')');
        journal() += line;
        return -1;
    }

private:
    QObject *m_sender;
};

// Notes "log LEVEL FUNCTION: MESSAGE", headed by the logger's name unless it is the default one, and by
// the source unless it is the one of the function's class.
class LogJournal
{
public:
    LogJournal()
        : m_sink(ZkBaseLog::addSink([](const ZkLogRecord &record) {
            QString text = QStringLiteral("log %1 %2: %3")
                               .arg(record.level)
                               .arg(record.function, record.message);
            if (record.logger != ZkBaseLog::defaultLogger()->name())
                text.prepend(record.logger + QLatin1Char(' '));
            if (record.file != "ZkSmartKeying/" + record.function.section("::", 0, 0))
                text.prepend(record.file + QLatin1Char(' '));
            journal() += text;
        }))
    { }
    ~LogJournal() { ZkBaseLog::removeSink(m_sink); }

private:
    Q_DISABLE_COPY(LogJournal)
    int m_sink;
};

class Workspace
{
public:
    using Maker = std::function<std::unique_ptr<ZkSmartKeyingPresenter>(IZkClip *)>;

    explicit Workspace(ZKSMARTKEYING::ZkSmartKeyingBusinessType type = ZKSMARTKEYING::SmartCutout,
                       bool readable = true)
        : Workspace(
            [type](IZkClip *edited) {
                return std::make_unique<ZkSmartKeyingPresenter>(type, edited);
            },
            readable)
    { }
    Workspace(const Maker &make, bool readable)
    {
        glow.described.reset(new Effect(ZKTIMELINE::SmartKeyingEffect, "glow"));
        neon.described.reset(new Effect(ZKTIMELINE::SmartKeyingEffect, "neon"));
        neon.missing = true;
        folder.own = {&glowMedia, &neonMedia};
        project.library.tree = {&folder};
        clip.hasSource = readable;
        clip.line.head.setPosition(130);
        takeJournal();
        presenter = make(&clip);
        controller = EditController::living;
        player = MediaPlayer::of(presenter->playerPresenter());
    }

    // Puts an effect on the edit clip as if it had been there before.
    Effect *carry(int type, const char *slug, bool enabled = true)
    {
        const auto effect = QSharedPointer<Effect>::create(type, slug);
        effect->timeline = &controller->clip.line;
        effect->enabled = enabled;
        controller->clip.list.effects.append(effect);
        return effect.data();
    }
    // The preset model's rows are then: None, glow (on disk), neon (to be downloaded).
    ZCutoutPresetItemModel *model()
    {
        ZCutoutPresetItemModel *const items = presenter->presetManager()->itemModel();
        items->addVirtualNoneItem();
        return items;
    }
    // From now on the journal has every signal of the presenter.
    void record()
    {
        m_recorder = std::make_unique<SignalJournal>(presenter.get());
        takeJournal();
    }
    void report(int kind, int subKind) { controller->clip.line.report({kind, subKind}); }

    ProjectManager project;
    Folder folder {QStringLiteral("1_subject_smart_cutout_preset")};
    MediaItem glow {11, QStringLiteral("glow")};
    MediaItem neon {12, QStringLiteral("neon")};
    Media glowMedia {QStringLiteral("Glow"), &glow};
    Media neonMedia {QStringLiteral("Neon"), &neon};
    Clip clip {"project"};
    std::unique_ptr<ZkSmartKeyingPresenter> presenter;
    EditController *controller;
    MediaPlayer *player;

private:
    std::unique_ptr<SignalJournal> m_recorder;
};

inline QImage strokes()
{
    return QImage(4, 4, QImage::Format_ARGB32_Premultiplied);
}

// Calls in the journal that start with one of these words, which are separated by bars.
inline QStringList noted(const QString &words)
{
    return takeJournal().filter(QRegularExpression("^(" + words + ')'));
}

// A list of calls written as one text with a line each.
inline QStringList lines(const QString &text)
{
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
