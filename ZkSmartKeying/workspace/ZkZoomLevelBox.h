// The box that shows and sets how large a frame is shown; not public.
#pragma once

#include "ZkWidgets.h"

#include <QVector>

// "Fit" and a percentage for each level to choose from. A frame that is zoomed to something else is
// shown as an entry that cannot be chosen. Choosing the shown entry again reports it again, since the
// frame may be a little off it.
class ZkZoomLevelBox : public ZkComboBox
{
    Q_OBJECT

public:
    // Percent, without the 0 that stands for "Fit".
    explicit ZkZoomLevelBox(const QVector<int> &levels, QWidget *parent = nullptr);
    ~ZkZoomLevelBox() override;

    // Percent, 0 for "Fit". Does not report.
    void showLevel(int percent);

    void showPopup() override;

Q_SIGNALS:
    void sigLevelChosen(int percent); // 0: "Fit"

protected:
    void changeEvent(QEvent *event) override;

private:
    static QString levelText(int percent);
    void showOtherLevel(int percent);
    void reportChange(int row);
    void reportActivation(int row);
    void report(int row);

    QVector<int> m_levels; // by row; the row behind them is the one that cannot be chosen
    bool m_isReported = false; // what has been chosen since the list was opened
};
