// Host core: presenter and view bases, messages, custom events, the logger, the network state and
// small helpers. Needs Qt Core alone.
#pragma once

#include "ZkGlobal.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

class IZkUndoRedoService;
class QWidget;
class ZkUIView;

// A pair of inclusive bounds.
template<typename T>
struct ZkRange
{
    T minimum {};
    T maximum {};

    bool contains(T value) const { return minimum <= value && value <= maximum; }
    friend bool operator==(const ZkRange &a, const ZkRange &b)
    {
        return a.minimum == b.minimum && a.maximum == b.maximum;
    }
    friend bool operator!=(const ZkRange &a, const ZkRange &b) { return !(a == b); }
};

// Numbers of the messages that views send up to the scene.
namespace ZKMESSAGE {
enum ZkSceneMessage {
    CommitFocusedEditor = 4102, // the focused editor takes over what it holds, before undo or redo
};
}

// A numbered message with an optional payload. The sender keeps ownership.
class ZKCORE_EXPORT ZkMessage
{
public:
    explicit ZkMessage(int id, const QVariant &data = QVariant());
    virtual ~ZkMessage();

    int id() const { return m_id; }
    QVariant data() const { return m_data; }

private:
    int m_id;
    QVariant m_data;
};

// Base of all presenters. Lives on the GUI thread; does not own its view.
class ZKCORE_EXPORT ZkPresenter : public QObject
{
    Q_OBJECT

public:
    explicit ZkPresenter(QObject *parent = nullptr);
    ~ZkPresenter() override;

    // The view-ready hook: the view calls it once, as the last step of its construction.
    virtual void init();
    virtual void reset();
    virtual ZkUIView *view() const;
    // Forgets the view; called by the view's owner before the view is deleted.
    virtual void clearView();
    // True when the message was taken; the base takes none.
    virtual bool dispatchMessage(ZkMessage *message);

    void setView(ZkUIView *view);

private:
    ZkUIView *m_view = nullptr;
};

// Base of all views. A view is a node of a tree of views beside the tree of widgets; neither the
// parent view, nor the presenter, nor the undo service is owned.
class ZKCORE_EXPORT ZkUIView
{
public:
    explicit ZkUIView(ZkUIView *parent = nullptr);
    virtual ~ZkUIView();

    virtual QWidget *widget() = 0;

    ZkUIView *parentView() const;
    ZkPresenter *viewPresenter() const;
    void setViewPresenter(ZkPresenter *presenter);
    // The same under the name that views use while they are built.
    void setPresenter(ZkPresenter *presenter) { setViewPresenter(presenter); }
    // The history that this view's undo and redo act on. A view without one of its own has its parent
    // view's; null when none of them has one.
    IZkUndoRedoService *undoRedoService() const;
    // Null: its parent view's again. The service must outlive the view or be taken away before it ends.
    void setUndoRedoService(IZkUndoRedoService *service);
    // Hands the message to the presenter of the outermost view. False when nobody took it.
    bool sendSceneMessage(ZkMessage *message);

private:
    Q_DISABLE_COPY(ZkUIView)
    ZkUIView *m_parentView;
    ZkPresenter *m_viewPresenter = nullptr;
    IZkUndoRedoService *m_undoRedoService = nullptr;
};

// A named notice between parts of the application that do not know each other.
struct ZkCustomEvent
{
    QString type;
    QVariant data;
};

// Receives the custom events of one type from its construction until its destruction.
// The handler runs in the thread of whoever posts the event: it must not touch objects of another
// thread directly. It returns true to take the event, so that later listeners do not see it.
// The destructor waits until a handler that runs in another thread has returned.
class ZKCORE_EXPORT ZkCustomEventListener : public QObject
{
    Q_OBJECT

public:
    using Handler = std::function<bool(const ZkCustomEvent &)>;

    ZkCustomEventListener(const QString &type, Handler handler, QObject *parent = nullptr);
    ~ZkCustomEventListener() override;

private:
    class Entry;
    friend class ZkCustomEventManager;
    std::shared_ptr<Entry> m_entry;
};

// Delivers custom events to the listeners of their type, in the order of registration.
// All operations may be called from any thread.
class ZKCORE_EXPORT ZkCustomEventManager
{
public:
    static ZkCustomEventManager *instance();

    // Returns when every listener was called. True when one of them took the event.
    bool postEvent(const QString &type, const QVariant &data = QVariant());

private:
    friend class ZkCustomEventListener;
    ZkCustomEventManager();
    ~ZkCustomEventManager();
    class Private;
    std::unique_ptr<Private> d;
};

namespace ZKLOG {
enum ZkLogLevel {
    Debug = 1,
    Detail = 2,
    Info = 4, // life cycle and flow
    Warning = 8, // failures that the work goes on from
    Error = 16, // something that was asked for cannot be done
};
}

struct ZkLogRecord
{
    QString logger;
    int level = ZKLOG::Info;
    QString file; // component and class, "ZkSmartKeying/ZkSmartKeyingPresenter"
    int line = 0;
    QString function; // qualified
    QDateTime time; // filled in by the logger when it is invalid
    quint64 threadId = 0; // filled in by the logger when it is 0
    QString message;
};

// A named logger. Loggers live until the program ends; all operations may be called from any thread.
class ZKCORE_EXPORT ZkBaseLog
{
public:
    using Sink = std::function<void(const ZkLogRecord &)>;

    static ZkBaseLog *defaultLogger();
    // The logger of that name, made on first use.
    static ZkBaseLog *logger(const QString &name);

    QString name() const;
    bool isEnabled(int level) const;
    // Records below that level are not written. Initially ZKLOG::Info.
    void setMinimumLevel(int level);
    // Hands the record to every sink. Does not test isEnabled(), the caller does.
    void write(const ZkLogRecord &record);

    // A sink sees the records of all loggers, in the thread that writes them. Returns its number.
    static int addSink(Sink sink);
    static void removeSink(int sink);

private:
    explicit ZkBaseLog(const QString &name);
    ~ZkBaseLog();
    class Private;
    std::unique_ptr<Private> d;
};

class ZKCORE_EXPORT ZkNetwork
{
public:
    // Whether the host's AI service can be reached; if it has set none, whether an interface is up.
    static bool IsNetworkConnect();
};

// Registers an observer while it lives. Owns neither side; both must outlive it.
template<typename Subject, typename Observer>
class ZkObserverConnector
{
public:
    ZkObserverConnector(Subject *subject, Observer *observer)
        : m_subject(subject)
        , m_observer(observer)
    {
        m_subject->addObserver(m_observer);
    }
    ~ZkObserverConnector() { m_subject->removeObserver(m_observer); }

private:
    Q_DISABLE_COPY(ZkObserverConnector)
    Subject *m_subject;
    Observer *m_observer;
};
