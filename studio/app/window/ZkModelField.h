#pragma once

#include "ZkModelFile.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace zk::app {

// Where the user chooses a network, or none. A file is checked as soon as it is chosen, and what is wrong
// with it is said below; the choice of before then stays.
class ModelField : public QWidget
{
    Q_OBJECT

public:
    ModelField(engine::EngineRole role, const models::ModelFile &file, QWidget *parent = nullptr);

    engine::EngineRole role() const { return m_role; }
    // Without a path: the built-in engine.
    const models::ModelFile &file() const { return m_file; }

Q_SIGNALS:
    // It says something else than before, and may need another height.
    void stateChanged();

private:
    void choose();
    void take(const models::ModelFile &file);
    void show(const models::ModelFile &file);

    const engine::EngineRole m_role;
    models::ModelFile m_file;
    QLineEdit *m_path;
    QPushButton *m_builtIn;
    QLabel *m_state;
};

} // namespace zk::app
