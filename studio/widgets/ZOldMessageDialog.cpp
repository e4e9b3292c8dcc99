#include "ZkWidgets.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

namespace {

constexpr int iconSide = 24; // widget pixels
constexpr int textWidth = 320;

QString nameOf(int button)
{
    switch (button) {
    case ZOldMessageDialog::CancelButton:
        return QCoreApplication::translate("ZOldMessageDialog", "Cancel");
    case ZOldMessageDialog::YesButton:
        return QCoreApplication::translate("ZOldMessageDialog", "Yes");
    case ZOldMessageDialog::NoAnswerButton:
        return QCoreApplication::translate("ZOldMessageDialog", "No");
    default:
        return QCoreApplication::translate("ZOldMessageDialog", "OK");
    }
}

int answerOfClosing(int buttons)
{
    for (int button : {ZOldMessageDialog::CancelButton,
                       ZOldMessageDialog::NoAnswerButton,
                       ZOldMessageDialog::OkButton}) {
        if (buttons & button)
            return button;
    }
    return ZOldMessageDialog::NoButton;
}

ZkLabel *addText(QVBoxLayout *column, const QString &text, int kind, bool selectable)
{
    auto *label = new ZkLabel(text);
    label->setLabelKind(kind);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    if (selectable)
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    column->addWidget(label);
    return label;
}

QWidget *makeContent(const QString &text, const QString &detail, bool selectable)
{
    auto *content = new ZkWidget;
    auto *row = new QHBoxLayout(content);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    auto *sign = new QLabel;
    sign->setPixmap(
        ZkSkinManager::instance()->icon(QStringLiteral("info")).pixmap(QSize(iconSide, iconSide)));
    row->addWidget(sign, 0, Qt::AlignTop);
    auto *column = new QVBoxLayout;
    column->setSpacing(8);
    addText(column, text, ZKWIDGET::PlainLabel, selectable);
    if (!detail.isEmpty())
        addText(column, detail, ZKWIDGET::SecondaryLabel, selectable);
    row->addLayout(column, 1);
    return content;
}

// What agrees stands left of what does not, and is what Enter takes.
void addButtons(ZkFramelessDialog *dialog, int buttons, int *answer)
{
    bool isFirst = true;
    for (int button : {ZOldMessageDialog::OkButton,
                       ZOldMessageDialog::YesButton,
                       ZOldMessageDialog::NoAnswerButton,
                       ZOldMessageDialog::CancelButton}) {
        if (!(buttons & button))
            continue;
        ZkPushButton *added = dialog->addPushButton(
            nameOf(button), isFirst ? ZkPushButton::PrimaryType : ZkPushButton::SecondaryType);
        if (isFirst)
            added->setFocus();
        isFirst = false;
        QObject::connect(added, &QAbstractButton::clicked, dialog, [dialog, button, answer] {
            *answer = button;
            dialog->accept();
        });
    }
}

} // namespace

int ZOldMessageDialog::Infomation(const QString &text,
                                  QWidget *parent,
                                  int buttons,
                                  const QString &title,
                                  const QString &detail,
                                  bool selectable)
{
    const int shown = buttons ? buttons : int(OkButton);
    int answer = answerOfClosing(shown);
    // It may go with its parent while it runs.
    const QPointer<ZkFramelessDialog> dialog = new ZkFramelessDialog(parent);
    dialog->setObjectName(QStringLiteral("ZOldMessageDialog"));
    dialog->setTitle(title);
    dialog->setAccessibleName(title.isEmpty() ? text : title);
    dialog->setAccessibleDescription(text);
    dialog->setContentWidget(makeContent(text, detail, selectable));
    addButtons(dialog, shown, &answer);
    dialog->exec();
    delete dialog;
    return answer;
}
