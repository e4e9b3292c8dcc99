#include "ZkErasingDesk.h"

#include "ZkLoginDialog.h"
#include "ZkPrompts.h"
#include "ZkResultDialog.h"
#include "ZkTaskStrip.h"

#include "ZkServiceState.h"
#include "project/ZkProject.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QScopedValueRollback>

namespace zk::app {

using erasing::EraseCause;

namespace {

QString nameOf(const EraseTasks::Item &item)
{
    return QFileInfo(item.request.media.path).fileName();
}

} // namespace

ErasingDesk::ErasingDesk(datamodel::Project *project,
                         const QString &eraser,
                         QAction *account,
                         QWidget *window)
    : m_window(window)
    , m_account(account)
    , m_tasks(project, eraser)
    , m_strip(new TaskStrip(&m_tasks, window))
    , m_loginListener(QStringLiteral("NotifyLogin"), [this](const ZkCustomEvent &) {
        // Whoever asks is in the middle of a click.
        QMetaObject::invokeMethod(this, &ErasingDesk::showLogin, Qt::QueuedConnection);
        return true;
    })
{
    core::setServiceState([this] { return m_tasks.isServiceThere(); });
    connect(account, &QAction::triggered, this, &ErasingDesk::switchAccount);
    connect(
        ZkAccount::instance(), &ZkAccount::sigAccountChanged, this, &ErasingDesk::refreshAccount);
    connect(m_strip, &TaskStrip::resultRequested, this, &ErasingDesk::showResult);
    connect(m_strip, &TaskStrip::reasonRequested, this, &ErasingDesk::showReason);
    connect(&m_tasks, &EraseTasks::succeeded, this, &ErasingDesk::onSucceeded);
    connect(&m_tasks, &EraseTasks::failed, this, &ErasingDesk::onFailed);
    connect(&m_tasks, &EraseTasks::noted, this, &ErasingDesk::notice);
    connect(project, &datamodel::Project::reset, this, &ErasingDesk::drop);
    refreshAccount();
}

ErasingDesk::~ErasingDesk()
{
    core::setServiceState({});
    delete m_result;
    delete m_login;
    delete m_strip;
}

void ErasingDesk::setWorkspaceOpen(bool isOpen)
{
    m_strip->setResultsEnabled(!isOpen);
}

bool ErasingDesk::mayDrop()
{
    if (m_isAsking)
        return false;
    const int count = m_tasks.unfinishedCount();
    if (count == 0)
        return true;
    const QScopedValueRollback<bool> asking(m_isAsking, true);
    return askUser(m_window,
                   tr("Give up %n erasing(s)?", nullptr, count),
                   tr("Erasings that are under way are cancelled, and results that were not saved "
                      "are removed. What is selected stays in the project."),
                   tr("Give Up"));
}

void ErasingDesk::drop()
{
    delete m_result;
    m_tasks.dropAll();
}

void ErasingDesk::retranslate()
{
    refreshAccount();
}

void ErasingDesk::refreshAccount()
{
    const ZkAccount *const account = ZkAccount::instance();
    QString name = account->userName();
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    m_account->setText(account->isLoggedIn() ? tr("Log &Out %1").arg(name) : tr("&Log In..."));
}

void ErasingDesk::showLogin()
{
    if (m_login || ZkAccount::instance()->isLoggedIn())
        return;
    m_login = new LoginDialog(m_window);
    m_login->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_login, &QDialog::accepted, this, [this] {
        Q_EMIT notice(tr("Logged in as %1").arg(ZkAccount::instance()->userName()));
    });
    m_login->open();
}

void ErasingDesk::switchAccount()
{
    if (!ZkAccount::instance()->isLoggedIn()) {
        showLogin();
        return;
    }
    ZkAccount::instance()->logOut();
    Q_EMIT notice(tr("Logged out"));
}

void ErasingDesk::showResult(int id)
{
    const EraseTasks::Item *const item = m_tasks.find(id);
    if (m_result || !item || item->state != EraseTasks::State::Done)
        return;
    m_result = new ResultDialog(&m_tasks, id, m_window);
    m_result->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_result, &ResultDialog::saved, this, [this] {
        Q_EMIT notice(tr("The clip shows the result. Undo brings the original back."));
    });
    m_result->open();
}

// A source that is another one needs another selection; anything else can be tried again.
void ErasingDesk::showReason(int id)
{
    const EraseTasks::Item *const item = m_tasks.find(id);
    if (!item || item->state != EraseTasks::State::Failed)
        return;
    const bool isOfSource = item->cause == EraseCause::Source;
    const qint64 clip = item->request.clip;
    const QString reason = item->reason; // the item may go meanwhile
    if (!askUser(m_window,
                 tr("Nothing was erased from %1").arg(nameOf(*item)),
                 reason,
                 isOfSource ? tr("Select Again") : tr("Try Again")))
        return;
    if (!isOfSource) {
        m_tasks.retry(id);
        return;
    }
    m_tasks.dismiss(id);
    Q_EMIT selectionRequested(clip);
}

void ErasingDesk::onSucceeded(int id)
{
    QApplication::alert(m_window);
    Q_EMIT notice(
        tr("%1 is done. Look at the result before you save it.").arg(nameOf(*m_tasks.find(id))));
}

void ErasingDesk::onFailed(int id)
{
    const EraseTasks::Item &item = *m_tasks.find(id);
    QApplication::alert(m_window);
    Q_EMIT notice(tr("Nothing was erased from %1: %2").arg(nameOf(item), item.reason));
}

} // namespace zk::app
