// The erasings of the open project: those that are under way, and results that wait for the user.
#pragma once

#include "ZkEraseQueue.h"

#include "ZkMediaInfo.h"
#include "project/ZkMediaEntry.h"
#include "segmentation/ZkEraseMasks.h"

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QThreadPool>
#include <QVector>

#include <atomic>
#include <functional>
#include <map>
#include <memory>

namespace zk::datamodel {
class Project;
}

namespace zk::app {

// What is to be erased from a clip of the project; taken when the user says so.
struct EraseRequest
{
    qint64 clip = 0;
    media::MediaInfo media;
    erasing::Fingerprint fingerprint; // from before anything was selected
    qint64 inFrame = 0; // of the media
    qint64 frameCount = 0;
    datamodel::EraseMasks masks;
    int maskCount = 0; // segment nodes, for the usage records
};

// One at a time is erased, in the order in which they came; what comes before and after that is done in a
// thread. Erasing is done by a process of the program that is given here.
//
// The result is a file beside the source. It becomes the clip's with save(), and goes with dismiss().
// Signals come after the state has changed, never from inside add(). GUI thread only.
class EraseTasks : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Preparing,
        Waiting,
        Erasing,
        Checking, // the result
        Done,
        Failed,
    };
    Q_ENUM(State)

    struct Item
    {
        int id = 0;
        EraseRequest request;
        State state = State::Preparing;
        int percent = 0;
        QString stage; // for the user
        QString reason; // of a failure, with what to do
        erasing::EraseCause cause = erasing::EraseCause::None; // of a failure
        QImage picture; // the first frame from which something is erased, small; null: not yet
        erasing::EraseJob job; // from Waiting on
        datamodel::MediaEntry result; // once Done
    };

    // Neither is owned; the project must outlive it. An empty program is the one that runs.
    EraseTasks(datamodel::Project *project, const QString &eraser, QObject *parent = nullptr);
    // Ends what is under way; results that wait stay on disk.
    ~EraseTasks() override;

    // Whether there is a program that erases.
    bool isServiceThere() const;
    // Code of the language of messages, such as "de".
    void setLanguage(const QString &code) { m_language = code; }
    // Of a network that makes up what no frame shows, in erasings that are added from now on; empty: none.
    void setModel(const QString &path) { m_model = path; }

    int add(const EraseRequest &request);
    QVector<int> ids() const; // the oldest first
    const Item *find(int id) const; // null: none; valid until the next change
    // What would be lost without the list: erasings that are under way, and results nobody has decided on.
    int unfinishedCount() const;

    // Leaves nothing. Not for results, nor failures.
    void cancel(int id);
    // A failure, once more.
    void retry(int id);
    // Takes a failure off the list, or a result with its file.
    void dismiss(int id);
    // The clip shows another file than the one that was erased from.
    bool isStale(int id) const;
    // False, with a sentence for the user and nothing changed, when the clip cannot take the result.
    bool save(int id, QString *error);
    // All of it: cancels and dismisses.
    void dropAll();

Q_SIGNALS:
    void added(int id);
    void changed(int id);
    void removed(int id);
    void succeeded(int id);
    void failed(int id);
    void noted(const QString &notice); // a sentence for the user

private:
    struct Entry : Item
    {
        erasing::EraseTask *task = nullptr; // from Waiting to Erasing
        QElapsedTimer clock;
        std::shared_ptr<std::atomic<bool>> isGivenUp = std::make_shared<std::atomic<bool>>(false);
    };
    struct Prepared
    {
        QVector<datamodel::EncodedMatte> masks;
        QImage picture;
    };

    Entry *entry(int id);
    QString program() const;
    QString freeFileFor(const Entry &entry) const;
    template<typename Result>
    void run(int id, std::function<Result()> work, void (EraseTasks::*finished)(int, Result));
    void prepare(int id);
    void onPrepared(int id, Prepared prepared);
    void enqueue(Entry *entry);
    void onProgress(int id, int percent, const QString &stage);
    void onFinished(int id, erasing::EraseTask::Result result, const QString &reason);
    struct Probed
    {
        datamodel::MediaEntry entry;
        QString error; // empty: none
    };
    void onProbed(int id, Probed probed);
    void fail(Entry *entry, erasing::EraseCause cause, const QString &reason);
    void setState(Entry *entry, State state);
    static void removeFile(const Entry &entry);
    void remove(int id);
    static void report(const Entry &entry, const QString &result);

    datamodel::Project *const m_project;
    const QString m_eraser;
    QString m_language;
    QString m_model;
    erasing::EraseQueue m_queue;
    std::map<int, Entry> m_entries;
    int m_lastId = 0;
    QThreadPool m_pool;
};

} // namespace zk::app
