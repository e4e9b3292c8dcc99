#include "ZkFrameRenderer.h"

#include "EditBench.h"
#include "ZkFrameCache.h"
#include "ZkTestMain.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

using namespace zk::datamodel;
using namespace zk::test;

namespace {

const QRect leftHalf(0, 0, 80, 90);
const QPoint inside(20, 20);
const QPoint outside(140, 70);

// Whether the pixel has that colour, or the clip's own where the colour is invalid.
bool shows(const QImage &picture, const QPoint &point, const QColor &colour, qint64 frame)
{
    const QColor is = picture.pixelColor(point);
    const QColor shouldBe =
        colour.isValid() ? colour : EditClip::instance().frame(frame).pixelColor(point);
    return qAbs(is.red() - shouldBe.red()) <= 6 && qAbs(is.green() - shouldBe.green()) <= 6
        && qAbs(is.blue() - shouldBe.blue()) <= 6 && is.alpha() == shouldBe.alpha();
}

} // namespace

class ZkFrameRendererTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clipWithoutMasksShowsAsItIs()
    {
        EditBench bench;
        bench.service()->setPreviewType(ZKSMARTKEYING::ResultPreview);
        bench.service()->setMaskInverted(true);
        for (const ZkStudioTimeline *timeline : {bench.timeline(), bench.project.get()}) {
            const RenderSnapshot snapshot(*timeline);
            QVERIFY(!snapshot.isCutOut());
            FrameRenderer renderer;
            QVERIFY(shows(renderer.preview(snapshot, 3), inside, QColor(), 3));
            QVERIFY(shows(renderer.cutout(snapshot, 3), outside, QColor(), 3));
            QCOMPARE(renderer.matte(snapshot, 3), maskOf(QRect(QPoint(), EditClip::size)));
        }
    }

    void previewTypes_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("isInverted");
        QTest::addColumn<QColor>("colourInside"); // invalid: the clip's own
        QTest::addColumn<QColor>("colourOutside");
        const QColor own;
        QTest::newRow("interactive") << 1 << false << QColor(Qt::blue) << own;
        QTest::newRow("interactive, inverted") << 1 << true << own << QColor(Qt::blue);
        QTest::newRow("result") << 2 << false << own << QColor(Qt::black);
        QTest::newRow("result, inverted") << 2 << true << QColor(Qt::black) << own;
        QTest::newRow("alpha") << 3 << false << QColor(Qt::white) << QColor(Qt::black);
    }
    void previewTypes()
    {
        QFETCH(int, type);
        QFETCH(bool, isInverted);
        QFETCH(QColor, colourInside);
        QFETCH(QColor, colourOutside);
        EditBench bench;
        QVERIFY(bench.controller->setMatte(2, maskOf(leftHalf)));
        bench.service()->setPreviewType(ZKSMARTKEYING::ZkPreviewType(type));
        bench.service()->setMaskRegionColor(Qt::blue);
        bench.service()->setMaskRegionAlpha(255);
        bench.service()->setMaskInverted(isInverted);
        const QImage picture = FrameRenderer().preview(RenderSnapshot(*bench.timeline()), 2);
        QCOMPARE(picture.format(), QImage::Format_ARGB32_Premultiplied);
        QVERIFY(shows(picture, inside, colourInside, 2));
        QVERIFY(shows(picture, outside, colourOutside, 2));
    }

    void framesWithoutMask()
    {
        EditBench bench;
        QVERIFY(bench.controller->setMatte(2, maskOf(leftHalf)));
        FrameRenderer renderer;
        const RenderSnapshot interactive(*bench.timeline());
        QVERIFY(shows(renderer.preview(interactive, 5), inside, QColor(), 5));
        bench.service()->setPreviewType(ZKSMARTKEYING::ResultPreview);
        const RenderSnapshot result(*bench.timeline());
        QVERIFY(shows(renderer.preview(result, 5), inside, Qt::black, 5));
        QCOMPARE(renderer.cutout(result, 5).pixelColor(inside).alpha(), 0);
        QCOMPARE(renderer.cutout(result, 2).pixelColor(inside).alpha(), 255);
    }

    void lookOnlyWhileEnabled()
    {
        EditBench bench;
        QVERIFY(bench.controller->setMatte(0, maskOf(leftHalf)));
        zk::effects::Look look;
        look.matte.shiftPx = 1000; // of 1080: grows over the whole of the frame
        const ZkEffectPtr effect(new ZkStudioEffect(look, QStringLiteral("grow")));
        QVERIFY(bench.clip()->effects()->add(effect));
        FrameRenderer renderer;
        const RenderSnapshot enabled(*bench.timeline());
        QCOMPARE(renderer.cutout(enabled, 0).pixelColor(outside).alpha(), 255);
        QCOMPARE(renderer.matte(enabled, 0).pixelColor(outside), QColor(Qt::white));
        effect->setEnabled(false);
        bench.service()->setMaskRegionAlpha(255);
        const RenderSnapshot disabled(*bench.timeline());
        QCOMPARE(renderer.cutout(disabled, 0).pixelColor(outside).alpha(), 0);
        // The mask stays in sight while the look is off.
        QVERIFY(
            shows(renderer.preview(disabled, 0), inside, bench.service()->maskRegionColor(), 0));
    }

    void projectShowsWhatWasApplied()
    {
        EditBench bench;
        for (qint64 frame = 0; frame < EditClip::frames; ++frame)
            QVERIFY(bench.controller->setMatte(frame, maskOf(leftHalf)));
        QVERIFY(bench.applyAndWait());
        FrameRenderer renderer;
        const RenderSnapshot applied(*bench.project);
        QVERIFY(shows(renderer.preview(applied, 7), inside, QColor(), 7));
        QVERIFY(shows(renderer.preview(applied, 7), outside, Qt::black, 7));
        QCOMPARE(renderer.cutout(applied, 7).pixelColor(outside).alpha(), 0);
        bench.project->clip()->effects()->effectAt(0)->setEnabled(false);
        const RenderSnapshot disabled(*bench.project);
        QVERIFY(!disabled.isCutOut());
        QCOMPARE(renderer.cutout(disabled, 7).pixelColor(outside).alpha(), 255);
    }

    void snapshotOutlivesTheTimeline()
    {
        RenderSnapshot snapshot;
        {
            EditBench bench;
            QVERIFY(bench.controller->setMatte(1, maskOf(leftHalf)));
            snapshot = RenderSnapshot(*bench.timeline());
            bench.service()->reset();
        }
        QImage picture;
        const std::unique_ptr<QThread> thread(
            QThread::create([&] { picture = FrameRenderer().cutout(snapshot, 1); }));
        thread->start();
        QVERIFY(thread->wait(10000));
        QCOMPARE(picture.pixelColor(inside).alpha(), 255);
        QCOMPARE(picture.pixelColor(outside).alpha(), 0);
    }

    void wrongFrames()
    {
        EditBench bench;
        const ZkStudioTimeline empty(ZkTimelineFormat {QSize(8, 8), 25, 1});
        const QVector<QPair<RenderSnapshot, qint64>> wrong {
            {RenderSnapshot(*bench.timeline()), -1},
            {RenderSnapshot(*bench.timeline()), EditClip::frames},
            {RenderSnapshot(empty), 0},
            {RenderSnapshot(), 0}};
        for (const auto &request : wrong) {
            FrameRenderer renderer;
            QVERIFY(renderer.preview(request.first, request.second).isNull());
            QVERIFY(renderer.cutout(request.first, request.second).isNull());
            QVERIFY(renderer.matte(request.first, request.second).isNull());
            QVERIFY(!renderer.errorString().isEmpty());
        }
    }

    void sharedCache()
    {
        EditBench bench;
        const auto cache = std::make_shared<zk::media::FrameCache>(1 << 20);
        const RenderSnapshot snapshot(*bench.timeline());
        const QImage picture = FrameRenderer(cache).source(snapshot, 4);
        QCOMPARE(cache->find(snapshot.mediaPath(), 4), picture);
        QImage marked(picture.size(), picture.format());
        marked.fill(Qt::magenta);
        cache->insert(snapshot.mediaPath(), 4, marked);
        QCOMPARE(FrameRenderer(cache).source(snapshot, 4), marked);
    }
};

ZK_TEST_MAIN(ZkFrameRendererTest)
#include "ZkFrameRendererTest.moc"
