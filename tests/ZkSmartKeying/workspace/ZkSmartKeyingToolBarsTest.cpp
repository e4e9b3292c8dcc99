// The bars above and under the player.
#include "WorkspaceView.h"
#include "ZkShoutingTranslator.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QSlider>

using Presenter = ZkSmartKeyingPresenter;

class ZkSmartKeyingToolBarsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_space = std::make_unique<WorkspaceView>();
        m_service = &m_space->controller->clip.cutout;
        m_header = m_space->header();
        m_bar = m_space->bar();
        QTRY_VERIFY(journal().contains(QStringLiteral("timeline.fit")));
        takeJournal();
    }
    void cleanup() { m_space.reset(); }

    void hasTheButtons()
    {
        QStringList found;
        for (int id = 0; id <= 8; ++id) {
            found += b(id)->objectName().remove("ZkSmartKeyingHeaderToolBar_") + ": "
                + b(id)->toolTip() + (b(id)->isCheckable() ? QStringLiteral(" *") : QString());
            QVERIFY(b(id)->property("WITH_SHORTCUT").toBool());
            QVERIFY2(!b(id)->styleSheet().isEmpty(), "the skin does not know the key");
            QCOMPARE(b(id)->isHidden(), id == 3);
        }
        QCOMPARE(found.join('\n'),
                 QStringLiteral("ZTimelineToolbar_Undo: Undo (Ctrl+Z)\n"
                                "ZTimelineToolbar_Redo: Redo (Ctrl+Y)\n"
                                "PositiveMask_Btn: Mask Areas to Keep (W) *\n"
                                "NegativeMask_Btn: Mask Areas to Remove (M) *\n"
                                "EraseMask_Btn: Eraser (E) *\n"
                                "DragFrame_Btn: Pan (H) *\n"
                                "RegionInvert_Btn: Invert Mask *\n"
                                "PreviewType_Interactive_Btn: Preview Mode\n"
                                "RegionColor_Btn: Overlay Color *"));
        QCOMPARE(box()->toolTip(), QStringLiteral("Zoom Level - Fit: (Ctrl+Shift+F)"));
        for (const int id : {0, 1, 4, 6})
            QVERIFY(!b(id)->isEnabled());
        QVERIFY(b(2)->isChecked());
    }

    void laysTheRowsOut()
    {
        auto *const line = m_space->find<ZkLineWidget>("ZkSmartKeyingHeaderToolBar_SplitLine");
        QCOMPARE(line->size(), QSize(1, 16));
        auto *const zoom = m_space->find<ZkZoomSlider>();
        const auto base = [this](int id) { return m_bar->baseButton(id); };
        const QVector<QVector<QWidget *>> rows {
            {b(0), b(1), b(2), b(4), b(5), box(), line, b(6), b(7), b(8)},
            {base(4), base(5), base(1), base(3), m_bar->playbackSlider(), time(), base(10), zoom}};
        for (const QVector<QWidget *> &row : rows) {
            QCOMPARE(row.first()->geometry(), QRect(16, 6, 28, 28));
            for (int i = 1; i < row.size(); ++i)
                QCOMPARE(row[i]->x() - row[i - 1]->geometry().right() - 1, 16);
        }
        QCOMPARE(zoom->geometry().right(), m_bar->width() - 17);
        QCOMPARE(time()->size(), QSize(88, 24));
        QCOMPARE(zoom->size(), QSize(144, 24));
        QCOMPARE(m_space->timeline.slider, zoom);
        QCOMPARE(barToolTips(),
                 QStringLiteral("Playhead Position|Zoom out (Ctrl+-)|Zoom in (Ctrl+=)|"
                                "Zoom to Fit Timeline (Shift+Z)"));
    }

    void choosesTheTool()
    {
        setErasable();
        const QVector<Qt::Key> keys {Qt::Key_W, Qt::Key_M, Qt::Key_E, Qt::Key_H};
        const QStringList usages {"cutout_mask", "remove_pen", "eraser", "drag"};
        for (int id = 2; id <= 5; ++id) {
            b(id)->click();
            b(id)->click(); // does not switch it off
            QCOMPARE(int(m_space->presenter->playerEditMode()), id - 1);
            for (int other = 2; other <= 5; ++other)
                QCOMPARE(b(other)->isChecked(), other == id);
            QCOMPARE(noted("event").last(), usage(usages.at(id - 2)));
        }
        for (int id = 2; id <= 5; ++id) {
            b(id == 5 ? 2 : 5)->click();
            takeJournal();
            QTest::keyClick(m_space->view, keys.at(id - 2));
            QCOMPARE(b(id)->isChecked(), id != 3); // its button is hidden, its key does nothing
            QCOMPARE(noted("event"), QStringList());
        }
    }

    void erasesOnlyWhereThereIsAMask()
    {
        QTest::keyClick(m_space->view, Qt::Key_E);
        QVERIFY(b(2)->isChecked());
        b(4)->setEnabled(true);
        b(4)->click(); // refused
        QVERIFY(b(2)->isChecked() && !b(4)->isChecked());
        setErasable();
        QTest::mouseClick(b(4), Qt::LeftButton);
        QVERIFY(b(4)->isChecked());
        showFrame(7); // no mask there
        QVERIFY(b(2)->isChecked() && !b(4)->isEnabled());
        b(5)->click();
        showFrame(0);
        QVERIFY(b(4)->isEnabled());
        showFrame(7); // the eraser alone is taken away
        QVERIFY(!b(4)->isEnabled() && b(5)->isChecked());
    }

    void undoesAndRedoes()
    {
        const auto key = [this](Qt::Key key) {
            QTest::keyClick(m_space->view, key, Qt::ControlModifier);
            return m_space->presenter->penPixelWidth();
        };
        key(Qt::Key_Z);
        key(Qt::Key_Y);
        QCOMPARE(noted("scene"), QStringList());
        m_space->presenter->changePenPixelWidth(50);
        QVERIFY(b(0)->isEnabled() && !b(1)->isEnabled());
        QTest::mouseClick(b(0), Qt::LeftButton);
        QCOMPARE(m_space->presenter->penPixelWidth(), 30);
        QVERIFY(!b(0)->isEnabled() && b(1)->isEnabled());
        QTest::mouseClick(b(1), Qt::LeftButton);
        QCOMPARE(m_space->presenter->penPixelWidth(), 50);
        QCOMPARE(noted("scene|event"),
                 QStringList({"scene(4102)", usage("undo"), "scene(4102)", usage("redo")}));
        QCOMPARE(key(Qt::Key_Z), 30);
        QCOMPARE(key(Qt::Key_Y), 50);
        QCOMPARE(noted("scene|event"), lines("scene(4102)\nscene(4102)"));
    }

    void invertsTheMask()
    {
        m_service->items = 1;
        changeSegment();
        QTest::mouseClick(b(6), Qt::LeftButton);
        QVERIFY(m_service->isMaskInverted() && b(2)->isChecked()); // the tool stays
        QCOMPARE(noted("event"), QStringList(usage("invert_mask")));
        m_service->setMaskInverted(false);
        changeSegment();
        QVERIFY(b(6)->isEnabled() && !b(6)->isChecked());
    }

    void choosesThePreview()
    {
        const QVector<QStringList> rows {
            {"1", "Toggle Alpha Overlay", "toggle_alpha_overlay", "Interactive"},
            {"4", "Toggle Transparency Grid", "toggle_transparency_grid", "Square"},
            {"2", "Toggle Transparency Black", "toggle_transparency_black", "Result"},
            {"3", "Toggle Alpha", "toggle_alpha", "Alpha"}};
        auto *const menu = m_header->findChild<ZkMenu *>();
        QVERIFY(menu->property("SizeKind").isValid() && menu->actions().size() == rows.size());
        for (int i = 0; i < rows.size(); ++i) {
            QTest::mouseClick(b(7), Qt::LeftButton);
            QTRY_VERIFY(menu->isVisible());
            QAction *const item = menu->actions().at(i);
            QCOMPARE(item->text(), rows[i][1]);
            QVERIFY(!item->icon().pixmap(24).isNull());
            takeJournal();
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item).center());
            QCOMPARE(int(m_service->previewType()), rows[i][0].toInt());
            QCOMPARE(noted("event"), QStringList(usage(rows[i][2])));
            changeSegment();
            QCOMPARE(b(7)->objectName(),
                     "ZkSmartKeyingHeaderToolBar_PreviewType_" + rows[i][3] + "_Btn");
        }
    }

    void choosesTheOverlayColor()
    {
        const QColor before(Qt::green);
        m_service->setMaskRegionColor(before);
        changeSegment();
        QCOMPARE(static_cast<ZkColorToolButton *>(b(8))->color(), before);
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
            bool placed = false;
            QTimer::singleShot(0, this, [&] {
                auto *const dialog = m_header->findChild<ZkColorSelecter *>();
                const QRect button = b(8)->rect();
                const QPoint corner(button.right() - dialog->width(), button.bottom() + 1);
                placed = dialog->pos() == b(8)->mapToGlobal(corner) && dialog->isModal()
                    && b(8)->isChecked() && dialog->currentColor() == before;
                dialog->setCurrentColor(key == Qt::Key_Return ? Qt::blue : Qt::red);
                QTest::keyClick(dialog, key);
            });
            QTest::mouseClick(b(8), Qt::LeftButton);
            QVERIFY(placed && !b(8)->isChecked());
            QCOMPARE(m_service->maskRegionColor(),
                     key == Qt::Key_Return ? QColor(Qt::blue) : before);
        }
        QVERIFY(!m_header->findChild<ZkColorSelecter *>());
        QCOMPARE(noted("event"), QStringList());
    }

    void showsAndSetsTheZoom()
    {
        QStringList texts;
        for (int i = 0; i < box()->count(); ++i)
            texts += box()->itemText(i) + '=' + box()->itemData(i).toString();
        QCOMPARE(texts.join(' '),
                 QStringLiteral("Fit=0 10%=10 50%=50 100%=100 200%=200 400%=400 800%=800"));
        QCOMPARE(box()->currentIndex(), 0);
        box()->setFocus();
        QTest::keyClick(box(), Qt::Key_2);
        QTest::keyClick(box(), Qt::Key_Home);
        QTest::keyClick(m_space->view, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(noted("zoomer"),
                 lines("zoomer.zoom(2,0,0)\nzoomer.zoom(0,0,0)\nzoomer.zoom(0,0,0)"));
        for (const int percent : {37, 100, 41, 0}) {
            m_space->player->zoomLevel = percent / 100.0f + 0.009f; // truncated
            emit m_space->presenter->sigFrameZoomed();
            QCOMPARE(box()->currentText(), percent ? QString::number(percent) + '%' : "Fit");
            QCOMPARE(box()->count(), 8); // one more, which cannot be chosen
            QCOMPARE(box()->itemData(7).toString(), QStringLiteral("hidden"));
            QVERIFY(box()->isRowHidden(7) && !box()->isRowHidden(6));
        }
        QCOMPARE(noted("zoomer"), QStringList());
    }

    // Which is how one gets from 100.9 % to 100 %.
    void setsTheShownZoomAgain()
    {
        m_space->player->zoomLevel = 1.009f;
        emit m_space->presenter->sigFrameZoomed();
        for (const Qt::Key key : {Qt::Key_Enter, Qt::Key_Up, Qt::Key_Escape}) {
            QTest::mouseClick(box(), Qt::LeftButton);
            QTRY_VERIFY(box()->view()->isVisible());
            QTest::keyClick(box()->view(), key);
            if (key == Qt::Key_Up)
                QTest::keyClick(box()->view(), Qt::Key_Enter);
            QTRY_VERIFY(!box()->view()->isVisible());
        }
        QCOMPARE(noted("zoomer"), lines("zoomer.zoom(1,0,0)\nzoomer.zoom(0.5,0,0)"));
    }

    void restsWhileTracking()
    {
        m_space->track(true);
        QVERIFY(!m_header->isEnabled() && !m_bar->isEnabled());
        QCOMPARE(m_bar->switchButtonState(1), 2);
        for (const int id : {1, 3, 4, 5, 10})
            QTest::mouseClick(m_bar->baseButton(id), Qt::LeftButton);
        QCOMPARE(noted("player|timeline"), QStringList());
        m_service->tracked = true;
        m_space->track(false);
        QVERIFY(m_header->isEnabled() && m_bar->isEnabled() && b(6)->isEnabled());
        QCOMPARE(m_bar->switchButtonState(1), 1);
    }

    void hasTheKeys()
    {
        const QStringList own =
            lines("1005 Del timeline.removeNode\n3000 Space before,player.playOrPause\n"
                  "3001 Ctrl+/ player.stopAndReturn\n3004 Left player.step(-1)\n"
                  "3005 Right player.step(1)\n3016 Ctrl+= zoom(60)\n3017 Ctrl+- zoom(40)\n"
                  "3018 Shift+Z timeline.fit");
        const QStringList others = lines("1000 Ctrl+Z\n1001 Ctrl+Y\n116004 W\n116005 M\n116006 E\n"
                                         "116007 H\n116008 Ctrl+Shift+F\n999 ");
        for (const QString &row : own + others)
            QCOMPARE(m_bar->shortcutText(row.section(' ', 0, 0).toInt()), row.section(' ', 1, 1));
        connect(m_bar, &ZkPlayerToolBarBase::sigBeforeShortcutPlayOrPause, this, [] {
            note("before");
        });
        ZkZoomSlider *const zoom = m_space->timeline.slider;
        connect(zoom, &ZkZoomSlider::sigValueChanged, this, [](int value) { note("zoom", value); });
        for (const QString &row : own) {
            const int keys = QKeySequence(row.section(' ', 1, 1))[0];
            const int modifiers = keys & int(Qt::KeyboardModifierMask);
            // Also when the canvas has become the active window.
            for (QWidget *const target : QVector<QWidget *> {m_space->view, m_space->canvas()}) {
                zoom->setValue(50);
                takeJournal();
                QTest::keyClick(
                    target, Qt::Key(keys - modifiers), Qt::KeyboardModifiers(modifiers));
                QCOMPARE(takeJournal().join(','), row.section(' ', 2));
            }
        }
    }

    void showsAndSetsThePosition()
    {
        QCOMPARE(time()->frameRate(), 25.0f);
        IZkPlayerControlObserver *const observer = m_space->player->observers.first();
        observer->playerDurationChanged(250);
        QCOMPARE(time()->maximum(), 250);
        for (const int frame : {30, -5}) {
            observer->playerFrameChanged(frame);
            QCOMPARE(time()->value(), qMax(frame, 0));
        }
        QTest::keyClick(time()->focusProxy(), Qt::Key_Up);
        QTest::mouseClick(m_bar->baseButton(10), Qt::LeftButton);
        QCOMPARE(noted("player|timeline"), lines("player.seek(1)\ntimeline.fit"));
    }

    void followsTheLanguage()
    {
        const zk::test::ShoutingTranslator translator;
        QTRY_COMPARE(b(2)->toolTip(), QStringLiteral("MASK AREAS TO KEEP (W)"));
        QCOMPARE(b(2)->accessibleName(), QStringLiteral("MASK AREAS TO KEEP"));
        QCOMPARE(box()->itemText(0), QStringLiteral("FIT"));
        QCOMPARE(box()->toolTip(), QStringLiteral("ZOOM LEVEL - FIT: (Ctrl+Shift+F)"));
        QCOMPARE(m_header->findChild<ZkMenu *>()->actions().at(3)->text(),
                 QStringLiteral("TOGGLE ALPHA"));
        QCOMPARE(m_space->canvas()->accessibleName(), QStringLiteral("CANVAS"));
        QCOMPARE(m_space->find<ZkProgressBar>()->accessibleName(), QStringLiteral("PROGRESS"));
        QVERIFY(barToolTips().endsWith(QStringLiteral("ZOOM TO FIT TIMELINE (Shift+Z)")));
    }

private:
    QAbstractButton *b(int id) const { return m_header->button(id); }
    ZkComboBox *box() const { return m_header->findChild<ZkComboBox *>(); }
    ZkTimeEditWidget *time() const
    {
        return m_space->find<ZkTimeEditWidget>("ZkMainPlayerToolBar_CurrentFrame");
    }
    QString barToolTips() const
    {
        const ZkZoomSlider *const zoom = m_space->timeline.slider;
        const QVector<QWidget *> widgets {
            time(), zoom->zoomOutButton(), zoom->zoomInButton(), m_bar->baseButton(10)};
        QStringList texts;
        for (const QWidget *widget : widgets)
            texts += widget->toolTip();
        return texts.join('|');
    }
    static QString usage(const QString &button)
    {
        return "event smart_cutout_click btn_name=" + button + " source_format=mp4";
    }
    void changeSegment() { emit m_space->presenter->sigSmartKeyingSegmentChanged(); }
    void setErasable() // on frame 0
    {
        m_service->erasableFrame = 0;
        changeSegment();
    }
    void showFrame(int frame)
    {
        m_space->player->frame = frame;
        emit m_space->presenter->sigFrameChanged(frame);
    }

    std::unique_ptr<WorkspaceView> m_space;
    SmartKeyingService *m_service;
    ZkSmartKeyingHeaderToolBar *m_header;
    ZkSmartKeyingPlayerToolBar *m_bar;
};

ZK_TEST_MAIN(ZkSmartKeyingToolBarsTest)
#include "ZkSmartKeyingToolBarsTest.moc"
