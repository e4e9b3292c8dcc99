// Selecting what is to be erased, asking for it, and leaving, as a user does it.
#include "ErasingBench.h"

#include "ZkSelectionState.h"

#include <QLabel>
#include <QPointer>
#include <QSignalSpy>

using zk::app::EditingPage;
using zk::datamodel::Segments;
using zk::test::ErasingBench;
using zk::test::WorkspaceClip;

namespace {

constexpr int patienceMs = 10000;

QAbstractButton *buttonOf(const QWidget *window, const QString &text)
{
    for (QAbstractButton *const button : window->findChildren<QAbstractButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

} // namespace

class TestErasingPage : public QObject
{
    Q_OBJECT

    std::unique_ptr<ErasingBench> m_bench;

    // Does it with the next modal dialog that comes up.
    template<typename Hand>
    void onNextDialog(QObject *scope, Hand hand)
    {
        auto *const timer = new QTimer(scope);
        connect(timer, &QTimer::timeout, scope, [timer, hand] {
            QWidget *const dialog = QApplication::activeModalWidget();
            if (!dialog || !dialog->isVisible())
                return;
            timer->stop();
            hand(dialog);
        });
        timer->start(1);
    }
    void open(const QString &path = WorkspaceClip::instance().path())
    {
        m_bench.reset();
        m_bench = std::make_unique<ErasingBench>(path);
        QVERIFY(m_bench->open());
    }
    const Segments &kept() const
    {
        return m_bench->timeline->clip()->studioService(ZKSMARTKEYING::AIErasing)->segments();
    }
    int projectSteps() const { return m_bench->timeline->undoRedoService()->undoStepCount(); }

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { m_bench.reset(); }

    void tracksBeforeItErases()
    {
        QVERIFY(!m_bench->create()->isEnabled());
        QVERIFY(m_bench->drawBox());
        QVERIFY(m_bench->create()->isEnabled());
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->list()->count(), 1, patienceMs);
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        QString title;
        onNextDialog(m_bench->page, [&](QWidget *dialog) { title = dialog->objectName(); });
        m_bench->clickCreate();
        QVERIFY(m_bench->waitForClosed());
        QCOMPARE(title, QStringLiteral("ZkAIErasingProressDialog"));
        QVERIFY(m_bench->wasApplied);
        QCOMPARE(m_bench->requests.size(), 1);
        const zk::app::EraseRequest &request = m_bench->requests.first();
        QCOMPARE(request.frameCount, qint64(WorkspaceClip::frames));
        QCOMPARE(request.maskCount, 1);
        QVERIFY(!request.fingerprint.isMissing());
        for (qint64 frame = 0; frame < request.frameCount; ++frame)
            QVERIFY2(!request.masks.at(frame).isEmpty(), qPrintable(QString::number(frame)));
        QCOMPARE(kept().nodes().size(), 1);
        QCOMPARE(projectSteps(), 1);
    }

    // The second time there is nothing to track.
    void erasesAgainWithoutTracking()
    {
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        QVERIFY(m_bench->drawBox());
        m_bench->clickCreate();
        QVERIFY(m_bench->waitForClosed());
        delete m_bench->page;
        delete m_bench->window.layout();
        m_bench->closedCount = 0;
        QVERIFY(m_bench->open());
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->list()->count(), 1, patienceMs);
        QVERIFY(m_bench->create()->isEnabled());
        QSignalSpy tracking(m_bench->presenter(), &ZkSmartKeyingPresenter::sigTrackingProgress);
        m_bench->clickCreate();
        QCOMPARE(m_bench->requests.size(), 2);
        QCOMPARE(tracking.size(), 0);
        QVERIFY(m_bench->waitForClosed());
        QCOMPARE(projectSteps(), 1);
    }

    void needsAnAccountAndTheService()
    {
        int logins = 0;
        const ZkCustomEventListener listener(QStringLiteral("NotifyLogin"), [&](const auto &) {
            ++logins;
            return true;
        });
        QVERIFY(m_bench->drawBox());
        m_bench->isOnline = false;
        m_bench->clickCreate();
        QCOMPARE(logins, 1);
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        bool wasTold = false;
        onNextDialog(m_bench->page, [&](QWidget *dialog) {
            wasTold = true;
            static_cast<QDialog *>(dialog)->reject();
        });
        const zk::test::ExpectedMessage offline(QStringLiteral("Network connection check failed"));
        m_bench->clickCreate();
        QVERIFY(wasTold);
        QVERIFY(m_bench->requests.isEmpty() && !m_bench->presenter()->isTrackingMode());
    }

    // In the other scene nothing is erased unless it is selected there, too.
    void erasesUpToAnotherScene()
    {
        open(WorkspaceClip::instance().cutPath());
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        QVERIFY(m_bench->drawBox());
        m_bench->clickCreate();
        QVERIFY(m_bench->answer(QMessageBox::Cancel));
        QTest::qWait(0);
        QVERIFY(m_bench->requests.isEmpty() && m_bench->closedCount == 0);
        m_bench->clickCreate();
        QVERIFY(m_bench->answer(QMessageBox::Apply));
        QVERIFY(m_bench->waitForClosed());
        QCOMPARE(m_bench->requests.size(), 1);
        QVERIFY(!m_bench->requests.first().masks.at(5).isEmpty());
        QVERIFY(m_bench->requests.first().masks.at(6).isEmpty());
    }

    void cancellingTheTrackingErasesNothing()
    {
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        QVERIFY(m_bench->drawBox());
        onNextDialog(m_bench->page, [](QWidget *dialog) {
            QTest::mouseClick(buttonOf(dialog, QStringLiteral("Cancel")), Qt::LeftButton);
        });
        m_bench->clickCreate();
        QTRY_VERIFY_WITH_TIMEOUT(!m_bench->page->isBusy(), patienceMs);
        QTest::qWait(0);
        QVERIFY(m_bench->requests.isEmpty());
        QCOMPARE(m_bench->closedCount, 0);
        m_bench->clickCreate();
        QVERIFY(m_bench->waitForClosed());
        QCOMPARE(m_bench->requests.size(), 1);
    }

    void savedSelectionsAreErasedOrDiscarded()
    {
        QWidget *const bar = m_bench->find<QWidget>("ErasingSaved");
        QVERIFY(bar->isHidden());
        for (int round = 1; round <= 2; ++round) {
            QVERIFY(m_bench->drawBox());
            QTRY_VERIFY_WITH_TIMEOUT(m_bench->button(QStringLiteral("Reset")), patienceMs);
            m_bench->erasing()->beginTracking();
            QTRY_VERIFY_WITH_TIMEOUT(m_bench->button(QStringLiteral("Save")), 60000);
            QTest::mouseClick(m_bench->button(QStringLiteral("Save")), Qt::LeftButton);
            QTRY_COMPARE_WITH_TIMEOUT(m_bench->masks()->savedSelectionCount(), round, patienceMs);
            QVERIFY(bar->isVisible());
            QVERIFY(
                m_bench->find<QLabel>("ErasingSavedText")->text().contains(QString::number(round)));
            QTRY_VERIFY_WITH_TIMEOUT(!m_bench->create()->isEnabled(), patienceMs);
            QTRY_COMPARE_WITH_TIMEOUT(m_bench->list()->count(), 0, patienceMs);
        }
        m_bench->click("ErasingSavedDiscard");
        QVERIFY(bar->isHidden());
        m_bench->page->undo();
        QVERIFY(bar->isVisible());
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        m_bench->click("ErasingSavedErase");
        QVERIFY(m_bench->waitForClosed());
        QCOMPARE(m_bench->requests.size(), 1);
        QVERIFY(!m_bench->requests.first().masks.at(5).isEmpty());
    }

    // The list shows a node's frame for every change of it, and its areas come with that.
    void listsWhatAStepBringsBack()
    {
        QVERIFY(m_bench->drawBox());
        for (const int frame : {4, 7}) {
            m_bench->presenter()->playerPresenter()->seek(frame);
            QTRY_COMPARE_WITH_TIMEOUT(
                m_bench->presenter()->currentFrame(), qint64(frame), patienceMs);
            QTRY_VERIFY_WITH_TIMEOUT(m_bench->editor()->getCropRects().isEmpty(), patienceMs);
            QVERIFY(m_bench->drawBox());
        }
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->list()->count(), 3, patienceMs);
        QSignalSpy reset(m_bench->erasing(), &ZkAIErasingPresenter::sigResetAllData);
        QTest::mouseClick(m_bench->button(QStringLiteral("Reset")), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(reset.count(), 1, patienceMs);
        QTest::qWait(0); // by now it has been read anew
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->list()->count(), 0, patienceMs);
        m_bench->page->undo();
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->list()->count(), 3, patienceMs);
    }

    void stillsNeedNoTracking()
    {
        open(WorkspaceClip::instance().stillPath());
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        QVERIFY(m_bench->drawBox());
        m_bench->clickCreate();
        QCOMPARE(m_bench->requests.size(), 1);
        QVERIFY(m_bench->requests.first().media.isStill);
        QCOMPARE(m_bench->requests.first().frameCount, qint64(1));
        QVERIFY(m_bench->waitForClosed());
    }

    void asksWhatBecomesOfTheSelection_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<int>("keptNodes");
        QTest::newRow("go on") << int(QMessageBox::Cancel) << false << 0;
        QTest::newRow("discard") << int(QMessageBox::Discard) << true << 0;
        QTest::newRow("keep") << int(QMessageBox::Save) << true << 1;
    }
    void asksWhatBecomesOfTheSelection()
    {
        QFETCH(int, answer);
        QVERIFY(m_bench->drawBox());
        QSignalSpy refused(m_bench->page, &EditingPage::closeRefused);
        m_bench->key(Qt::Key_W, Qt::ControlModifier);
        QVERIFY(m_bench->answer(QMessageBox::StandardButton(answer)));
        QTRY_COMPARE_WITH_TIMEOUT(refused.count() + m_bench->closedCount, 1, patienceMs);
        QTEST(m_bench->closedCount == 1, "closes");
        QTEST(kept().nodes().size(), "keptNodes");
        QVERIFY(m_bench->requests.isEmpty());
    }

    void closesAtEveryStage_data()
    {
        QTest::addColumn<QString>("stage");
        for (const char *stage : {"opening", "drawing", "painting", "preview", "create", "offline"})
            QTest::newRow(stage) << QString::fromLatin1(stage);
    }
    void closesAtEveryStage()
    {
        QFETCH(QString, stage);
        const zk::test::ExpectedMessage offline(QStringLiteral("Network connection check failed"));
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
        const QPointer<EditingPage> page = m_bench->page;
        const auto close = [page] { page->closeWithoutAsking(); };
        // Taking it apart processes no events.
        bool hasProcessed = false;
        bool hadProcessed = false;
        connect(page, &EditingPage::leaving, page, [page, &hasProcessed] {
            QMetaObject::invokeMethod(
                page, [&hasProcessed] { hasProcessed = true; }, Qt::QueuedConnection);
        });
        connect(page, &EditingPage::closed, page, [&] { hadProcessed = hasProcessed; });
        if (stage == QLatin1String("drawing")) {
            // From inside the processEvents() of the rebuilt rectangles.
            connect(m_bench->presenter(),
                    &ZkSmartKeyingPresenter::sigAIRemoveSelectAreaAdd,
                    page,
                    close);
            m_bench->drag(m_bench->editor(),
                          zk::test::boxAround(m_bench->presenter()->canvasRect()));
        } else if (stage == QLatin1String("painting")) {
            QTest::mouseClick(m_bench->button(QStringLiteral("Smart Brush")), Qt::LeftButton);
            QTRY_VERIFY_WITH_TIMEOUT(m_bench->canvas()->isVisible(), patienceMs);
            QTimer::singleShot(0, page, close);
            m_bench->dragOverObject();
        } else if (stage != QLatin1String("opening")) {
            QVERIFY(m_bench->drawBox());
            if (stage == QLatin1String("preview")) {
                m_bench->erasing()->beginTracking();
                QVERIFY(page->isBusy());
                close();
            } else {
                m_bench->isOnline = stage == QLatin1String("create");
                onNextDialog(page, [close](QWidget *) { close(); });
                m_bench->clickCreate();
            }
        } else {
            close();
        }
        QVERIFY(m_bench->waitForClosed());
        QTest::qWait(0);
        QCOMPARE(m_bench->closedCount, 1);
        QVERIFY(hasProcessed && !hadProcessed);
        QVERIFY(!page->isOpen() && m_bench->requests.isEmpty());
        QVERIFY(kept().isEmpty());
    }

    void refusesWhatHasNoPicture()
    {
        m_bench.reset();
        const QString path = WorkspaceClip::instance().path() + QStringLiteral(".gone.mkv");
        QVERIFY(QFile::copy(WorkspaceClip::instance().path(), path));
        m_bench = std::make_unique<ErasingBench>(path);
        QVERIFY(QFile::remove(path));
        QVERIFY(!m_bench->open());
        QVERIFY(m_bench->answer(QMessageBox::Ok));
        QVERIFY(m_bench->waitForClosed());
    }

    // What tells whether tracking has to come first.
    void knowsWhetherASelectionIsTracked()
    {
        using namespace zk::datamodel;
        QImage mask(8, 8, QImage::Format_Grayscale8);
        mask.fill(255);
        const auto node = QSharedPointer<SegmentNode>::create();
        node->result = EncodedMatte(mask);
        node->revision = 7;
        Segments segments;
        QVERIFY(zk::app::isFullyTracked(segments, 3));
        segments.setNode(1, node);
        QVERIFY(zk::app::isFullyTracked(segments, 1));
        QVERIFY(!zk::app::isFullyTracked(segments, 3));
        const TrackedSide side {EncodedMatte(mask), 1, 1, 7, 1};
        for (qint64 frame : {1, 2})
            segments.setTracked(frame, true, side);
        QVERIFY(!zk::app::isFullyTracked(segments, 3));
        segments.setTracked(0, false, side);
        QVERIFY(zk::app::isFullyTracked(segments, 3));
        const Segments tracked = segments;
        QVERIFY(zk::app::isSameSelection(tracked, segments));
        const auto changed = QSharedPointer<SegmentNode>::create(*node);
        changed->revision = 8;
        segments.setNode(1, changed);
        QVERIFY(!zk::app::isFullyTracked(segments, 3));
        QVERIFY(!zk::app::isSameSelection(tracked, segments));
        segments = tracked;
        segments.setNode(2, changed);
        QVERIFY(!zk::app::isFullyTracked(segments, 3));
    }
};

ZK_TEST_MAIN(TestErasingPage)
#include "tst_erasing_page.moc"
