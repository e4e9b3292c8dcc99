#include "ZkPrompts.h"

#include "ZkWidgets.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace zk::app {

namespace {

struct Prompts
{
    Q_DECLARE_TR_FUNCTIONS(zk::app::Prompts)
};

constexpr QSize iconSize(32, 32); // widget pixels
constexpr int shownLines = 8; // more of them are details

void setUp(QMessageBox *box, const char *icon, const QString &title, const QString &text)
{
    box->setObjectName(QStringLiteral("Prompt"));
    // Those of the style do not fit into a dark skin.
    box->setIconPixmap(ZkSkinManager::instance()->icon(QLatin1String(icon)).pixmap(iconSize));
    box->setWindowTitle(title);
    box->setText(title);
    box->setInformativeText(text);
    // Names of files are no markup.
    box->setTextFormat(Qt::PlainText);
}

} // namespace

void warnUser(QWidget *parent, const QString &title, const QString &text)
{
    warnUser(parent, title, text, {});
}

void warnUser(QWidget *parent, const QString &title, const QString &text, const QStringList &list)
{
    QMessageBox box(parent);
    QStringList lines(text);
    lines += list.mid(0, shownLines);
    if (list.size() > shownLines) {
        lines += Prompts::tr("and %n more", nullptr, list.size() - shownLines);
        box.setDetailedText(list.join(QLatin1Char('\n')));
    }
    lines.removeAll(QString());
    setUp(&box, "warning", title, lines.join(QLatin1String("\n\n")));
    box.exec();
}

bool askUser(QWidget *parent, const QString &title, const QString &text, const QString &goAhead)
{
    QMessageBox box(parent);
    setUp(&box, "info", title, text);
    QPushButton *yes = box.addButton(goAhead, QMessageBox::AcceptRole);
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    box.exec();
    return box.clickedButton() == yes;
}

SaveChoice askToSave(QWidget *parent, const QString &project)
{
    QMessageBox box(parent);
    setUp(&box,
          "warning",
          Prompts::tr("Save the changes to \"%1\"?").arg(project),
          Prompts::tr("What you have changed since the last save is lost otherwise."));
    box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return SaveChoice::Save;
    case QMessageBox::Discard:
        return SaveChoice::Discard;
    default:
        return SaveChoice::Cancel;
    }
}

} // namespace zk::app
