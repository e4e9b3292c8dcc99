#pragma once

#include <QWidget>

class QCheckBox;
class QFormLayout;
class QLabel;

namespace zk::datamodel {
class Project;
class ProjectClip;
} // namespace zk::datamodel

namespace zk::app {

class WindowActions;

// What is known about the current clip, and the cutout that was applied to it.
class ClipProperties : public QWidget
{
    Q_OBJECT

public:
    ClipProperties(datamodel::Project *project,
                   const WindowActions &actions,
                   QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    enum Fact {
        NameFact,
        SizeFact,
        RateFact,
        LengthFact,
        SoundFact,
        PlaceFact,
        FactCount,
    };

    QWidget *createFacts(const WindowActions &actions);
    QWidget *createCutout(const WindowActions &actions);
    QWidget *createErasing(const WindowActions &actions);
    void retranslate();
    void refresh();
    void showFacts(const datamodel::ProjectClip &clip);
    void showCutout(const datamodel::ProjectClip &clip);
    void setFact(Fact fact, const QString &text);
    void switchCutout(bool on);

    datamodel::Project *const m_project;
    QLabel *m_hint;
    QLabel *m_factsTitle = nullptr;
    QLabel *m_names[FactCount] = {};
    QLabel *m_values[FactCount] = {};
    QLabel *m_problem = nullptr;
    QWidget *m_relink = nullptr;
    QLabel *m_cutoutTitle = nullptr;
    QLabel *m_look = nullptr;
    QCheckBox *m_isOn = nullptr;
    QLabel *m_erasingTitle = nullptr;
    QLabel *m_selection = nullptr;
    // Made last, as what is above is on them.
    QWidget *const m_facts;
    QWidget *const m_cutout;
    QWidget *const m_erasing;
};

} // namespace zk::app
