#include "ZkModelField.h"

#include "ZkBusyCursor.h"
#include "ZkPreferences.h"

#include "ZkModelTexts.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace zk::app {

using models::ModelFile;

ModelField::ModelField(engine::EngineRole role, const ModelFile &file, QWidget *parent)
    : QWidget(parent)
    , m_role(role)
    , m_path(new QLineEdit(this))
    , m_builtIn(new QPushButton(tr("Built In"), this))
    , m_state(new QLabel(this))
{
    const QString name = models::ModelTexts::role(role);
    auto *chooser = new QPushButton(tr("Choose..."), this);
    m_path->setReadOnly(true);
    m_path->setPlaceholderText(tr("Built in"));
    m_path->setAccessibleName(name);
    chooser->setObjectName(QStringLiteral("ModelField_Choose"));
    chooser->setAccessibleName(tr("Choose a network: %1").arg(name));
    chooser->setAutoDefault(false);
    m_builtIn->setObjectName(QStringLiteral("ModelField_BuiltIn"));
    m_builtIn->setAccessibleName(tr("Use the built-in engine: %1").arg(name));
    m_builtIn->setAutoDefault(false);
    m_state->setObjectName(QStringLiteral("ModelField_State"));
    m_state->setWordWrap(true);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *row = new QHBoxLayout;
    row->addWidget(m_path, 1);
    row->addWidget(chooser);
    row->addWidget(m_builtIn);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addLayout(row);
    column->addWidget(m_state);
    setFocusProxy(chooser);
    connect(chooser, &QPushButton::clicked, this, &ModelField::choose);
    connect(m_builtIn, &QPushButton::clicked, this, [this] { take({}); });
    take(file);
}

void ModelField::choose()
{
    const QString path = QFileDialog::getOpenFileName(this,
                                                      tr("Choose a Network"),
                                                      Preferences::folder(Preferences::ModelFolder),
                                                      tr("Networks (*.onnx)"));
    if (path.isEmpty())
        return;
    Preferences::rememberFolderOf(Preferences::ModelFolder, path);
    ModelFile chosen;
    {
        const BusyCursor busy;
        chosen = ModelFile::read(path, m_role);
    }
    if (chosen.model)
        take(chosen);
    else
        show(chosen);
}

void ModelField::take(const ModelFile &file)
{
    m_file = file;
    m_path->setText(QDir::toNativeSeparators(file.path));
    m_path->setToolTip(m_path->text());
    m_builtIn->setEnabled(!file.path.isEmpty());
    show(file);
}

void ModelField::show(const ModelFile &file)
{
    QString text = file.error;
    if (file.model) {
        const cv::Size size = file.model->fixedSize();
        text = size.empty()
            ? tr("Checked. It takes pictures of any size.")
            : tr("Checked. It takes pictures of %1 x %2 pixels.").arg(size.width).arg(size.height);
    }
    m_state->setText(text);
    m_state->setVisible(!text.isEmpty());
    m_state->setProperty("isProblem", !file.error.isEmpty());
    m_state->style()->unpolish(m_state);
    m_state->style()->polish(m_state);
    Q_EMIT stateChanged();
}

} // namespace zk::app
