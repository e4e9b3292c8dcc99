// An editor in a folder of its own, clips for it, and hands for its modal dialogs.
#pragma once

#include "ZkLanguage.h"
#include "ZkMainWindow.h"
#include "ZkMediaPlayer.h"
#include "ZkSampleClip.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkTestMain.h"
#include "ZkWorkspacePage.h"
#include "segmentation/ZkMatteTrack.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"
#include "timeline/ZkStudioTimeline.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>

#include <functional>
#include <memory>

namespace zk::test {

constexpr int timeoutMs = 10000;

// The sample clip, small and short, written once per program.
class WindowClips
{
public:
    static constexpr int frames = 12;
    static constexpr QSize size {160, 90};

    static const WindowClips &instance()
    {
        static const WindowClips clips;
        return clips;
    }

    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString first() const { return path(QStringLiteral("first.mkv")); }
    QString second() const { return path(QStringLiteral("second.mkv")); }
    QString text() const { return path(QStringLiteral("notes.mkv")); } // no video at all

private:
    WindowClips()
    {
        QString error;
        QFile notes(text());
        const bool written = media::SampleClip({size, frames, 24}).write(first(), {}, &error)
            && QFile::copy(first(), second()) && notes.open(QIODevice::WriteOnly)
            && notes.write("no video") > 0;
        if (!written)
            qFatal("The test clips cannot be written: %s", qPrintable(error));
    }

    QTemporaryDir m_folder;
};

// Does something with the next modal dialogs of that type, one hand for each, as soon as they are on screen.
// What message boxes say is kept.
class NextDialog : public QObject
{
public:
    using Hand = std::function<void(QDialog *)>;

    NextDialog(const char *className, const Hand &hand, const Hand &handOfSecond = {})
        : m_className(className)
        , m_hands({hand})
    {
        if (handOfSecond)
            m_hands.append(handOfSecond);
        m_timer.start(5);
        connect(&m_timer, &QTimer::timeout, this, &NextDialog::look);
    }

    // All of them.
    bool hasCome() const { return m_hands.isEmpty(); }
    QString text() const { return m_text; }

private:
    void look()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        const bool isNew = dialog && dialog != m_last && dialog->inherits(m_className);
        if (m_hands.isEmpty() || !isNew || !dialog->isVisible())
            return;
        m_last = dialog;
        if (auto *box = qobject_cast<QMessageBox *>(dialog))
            m_text += box->text() + QLatin1Char('\n') + box->informativeText();
        m_hands.takeFirst()(dialog);
    }

    const char *m_className;
    QVector<Hand> m_hands;
    QPointer<QDialog> m_last;
    QTimer m_timer;
    QString m_text;
};

inline NextDialog::Hand press(QMessageBox::StandardButton button)
{
    return [button](QDialog *dialog) {
        QTest::mouseClick(static_cast<QMessageBox *>(dialog)->button(button), Qt::LeftButton);
    };
}

inline NextDialog::Hand pressKey(Qt::Key key)
{
    return [key](QDialog *dialog) { QTest::keyClick(dialog, key); };
}

// Types the path into a file dialog, and Enter.
inline NextDialog::Hand typePath(const QString &path)
{
    return [path](QDialog *dialog) {
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->selectAll();
        QTest::keyClicks(name, path);
        QTest::keyClick(name, Qt::Key_Return);
    };
}

// The editor with its settings, presets and autosaves in a folder that outlives it.
class EditorBench
{
public:
    EditorBench()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, file(QStringLiteral("etc")));
        QCoreApplication::setOrganizationName(QStringLiteral("ZkStudioTest"));
        QCoreApplication::setApplicationName(QStringLiteral("ZkStudioTest"));
        QSettings().clear();
        start();
    }
    ~EditorBench() { stop(); }

    // Again, as after the program was ended.
    void start(const QUrl &presetServer = QUrl())
    {
        m_settings = std::make_unique<QSettings>();
        m_language = std::make_unique<app::Language>(m_settings.get());
        app::EditorConfig config;
        config.libraryFolder = file(QStringLiteral("presets"));
        config.autosaveFolder = autosaves();
        config.presetServer = presetServer;
        config.eraser = eraser;
        window = std::make_unique<app::MainWindow>(config, m_language.get());
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }
    // Without asking.
    void stop()
    {
        window.reset();
        m_language.reset();
        m_settings.reset();
    }

    QString file(const QString &name) const { return m_folder.filePath(name); }
    QString autosaves() const { return file(QStringLiteral("autosave")); }

    datamodel::Project *project() const { return window->project(); }
    template<typename T = QWidget>
    T *find(const char *name) const
    {
        return window->findChild<T *>(QLatin1String(name));
    }
    QAction *action(const char *name) const { return find<QAction>(name); }

    // On what has the focus in the window; without a window manager a dialog leaves none active behind. A
    // window counts as active while a dialog of it is, too.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        window->activateWindow();
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activeWindow() == window.get(), timeoutMs);
        QWidget *focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window.get(), key, modifiers);
    }

    // Files from outside, let fall on the middle of the widget, which takes them itself.
    void drop(QWidget *target, const QStringList &files) const
    {
        drop(target, target->rect().center(), files);
    }
    void drop(QWidget *target, const QPoint &place, const QStringList &files) const
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &path : files)
            urls.append(QUrl::fromLocalFile(path));
        data.setUrls(urls);
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &enter);
        QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (enter.isAccepted())
            QApplication::sendEvent(target, &drop);
    }
    // Two clips: first, second.
    void importBoth()
    {
        drop(window.get(), {WindowClips::instance().first(), WindowClips::instance().second()});
        QTRY_COMPARE_WITH_TIMEOUT(project()->clipCount(), 2, timeoutMs);
    }
    // Again, and takes what the one before has left.
    bool recover()
    {
        const NextDialog recovery("zk::app::RecoveryDialog", [](QDialog *dialog) {
            QTest::mouseClick(dialog->findChild<QWidget *>("RecoveryDialog_Recover"),
                              Qt::LeftButton);
        });
        start();
        window->offerRecovery();
        return recovery.hasCome();
    }
    // Opens the first clip's workspace with a matte on its first frame, and begins to track it; null: it cannot.
    ZkSmartKeyingPresenter *trackMatte()
    {
        importBoth();
        press(Qt::Key_K, Qt::ControlModifier);
        ZkSmartKeyingPresenter *presenter = window->workspace()->page()->presenter();
        const auto isReady = [&] { return presenter->playerPresenter()->duration() > 0; };
        QImage matte(WindowClips::size, QImage::Format_Grayscale8);
        matte.fill(0);
        QPainter(&matte).fillRect(QRect(50, 20, 40, 40), Qt::white);
        if (!QTest::qWaitFor(isReady, timeoutMs)
            || !presenter->editController()->setMatte(0, matte))
            return nullptr;
        presenter->beginTrackingMode(ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd);
        return presenter;
    }
    // Cuts the upper half out of the clip, as an applied workspace does.
    static void cutOut(const datamodel::ProjectClip *clip)
    {
        QImage matte(WindowClips::size, QImage::Format_Grayscale8);
        matte.fill(0);
        for (int y = 0; y < matte.height() / 2; ++y)
            std::fill_n(matte.scanLine(y), matte.width(), uchar(255));
        const QVector<datamodel::EncodedMatte> mattes(WindowClips::frames,
                                                      datamodel::EncodedMatte(matte));
        clip->clip()->setMatteTrack(std::make_shared<datamodel::MatteTrack>(mattes));
        clip->clip()->studioEffects()->add(ZkStudioEffect::plainCutout());
    }

    std::unique_ptr<app::MainWindow> window;
    QString eraser; // for the next start()

private:
    const ExpectedMessage m_offscreen {QStringLiteral("^This plugin does not support")};
    QTemporaryDir m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<app::Language> m_language;
};

} // namespace zk::test
