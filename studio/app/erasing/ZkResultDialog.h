#pragma once

#include "ZkPageQuestions.h"

#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;
class QSlider;
class ZkToolButton;

namespace zk::app {

class CompareView;
class ErasedFrames;
class EraseTasks;

// Shows what an erasing made beside what was there before, and lets the user decide: Save makes it the
// clip's, Discard throws it away, and closing leaves it for later. The space bar shows the original while it
// is held.
class ResultDialog : public QDialog
{
    Q_OBJECT

public:
    // The tasks are not owned; the result is a Done one of theirs. Closes when that goes.
    ResultDialog(EraseTasks *tasks, int id, QWidget *parent = nullptr);
    ~ResultDialog() override;

    int id() const { return m_id; }

Q_SIGNALS:
    void saved();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool event(QEvent *event) override;

private:
    void layOut();
    void connectParts();
    void show(qint64 frame);
    void showFrame(const QImage &before, const QImage &after);
    void play(bool on);
    void advance();
    void save();
    void saveNow();
    void discard();

    EraseTasks *const m_tasks;
    const int m_id;
    ErasedFrames *m_frames;
    CompareView *m_view;
    QLabel *m_problem; // in place of the pictures
    ZkToolButton *m_play;
    QSlider *m_slider;
    QLabel *m_hint;
    QPushButton *m_discard;
    QPushButton *m_later;
    QPushButton *m_save;
    QTimer m_clock;
    PageQuestions m_questions;
};

} // namespace zk::app
