#include "ZkFrameRenderer.h"

#include "EditBench.h"
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
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void clipWithoutMasksShowsAsItIs()
    {
        bench->service()->setPreviewType(ZKSMARTKEYING::ResultPreview);
        bench->service()->setMaskInverted(true);
        const RenderSnapshot snapshot(*bench->timeline());
        FrameRenderer renderer;
        QVERIFY(shows(renderer.preview(snapshot, 3), inside, QColor(), 3));
        QVERIFY(shows(renderer.cutout(snapshot, 3), outside, QColor(), 3));
        QCOMPARE(renderer.matte(snapshot, 3), maskOf(QRect(QPoint(), EditClip::size)));
    }

    void previewsTheMask()
    {
        QVERIFY(bench->controller->setMatte(2, maskOf(leftHalf)));
        bench->service()->setMaskRegionColor(Qt::blue);
        bench->service()->setMaskRegionAlpha(255);
        bench->service()->setMaskInverted(true);
        FrameRenderer renderer;
        const QImage over = renderer.preview(RenderSnapshot(*bench->timeline()), 2);
        QVERIFY(shows(over, inside, QColor(), 2) && shows(over, outside, Qt::blue, 2));
        bench->service()->setMaskInverted(false);
        bench->service()->setPreviewType(ZKSMARTKEYING::ResultPreview);
        const RenderSnapshot result(*bench->timeline());
        const QImage cut = renderer.preview(result, 2);
        QVERIFY(shows(cut, inside, QColor(), 2) && shows(cut, outside, Qt::black, 2));
        // The object is nowhere in a frame without a mask.
        QVERIFY(shows(renderer.preview(result, 5), inside, Qt::black, 5));
        QCOMPARE(renderer.cutout(result, 5).pixelColor(inside).alpha(), 0);
        QCOMPARE(renderer.cutout(result, 2).pixelColor(inside).alpha(), 255);
    }

    void lookOnlyWhileEnabled()
    {
        QVERIFY(bench->controller->setMatte(0, maskOf(leftHalf)));
        zk::effects::Look look;
        look.matte.shiftPx = 1000; // of 1080: grows over the whole of the frame
        const ZkEffectPtr effect(new ZkStudioEffect(look, QStringLiteral("grow")));
        QVERIFY(bench->clip()->effects()->add(effect));
        FrameRenderer renderer;
        const RenderSnapshot enabled(*bench->timeline());
        QCOMPARE(renderer.cutout(enabled, 0).pixelColor(outside).alpha(), 255);
        QCOMPARE(renderer.matte(enabled, 0).pixelColor(outside), QColor(Qt::white));
        effect->setEnabled(false);
        const RenderSnapshot disabled(*bench->timeline());
        QCOMPARE(renderer.cutout(disabled, 0).pixelColor(outside).alpha(), 0);
    }

    void projectShowsWhatWasApplied()
    {
        QVERIFY(bench->giveTruthEverywhere() && bench->controller->setMatte(7, maskOf(leftHalf)));
        QVERIFY(bench->applyAndWait());
        FrameRenderer renderer;
        const RenderSnapshot applied(*bench->project);
        QVERIFY(shows(renderer.preview(applied, 7), inside, QColor(), 7));
        QVERIFY(shows(renderer.preview(applied, 7), outside, Qt::black, 7));
        bench->project->clip()->effects()->effectAt(0)->setEnabled(false);
        const RenderSnapshot disabled(*bench->project);
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
        const QVector<QPair<RenderSnapshot, qint64>> wrong {
            {RenderSnapshot(*bench->timeline()), -1},
            {RenderSnapshot(*bench->timeline()), EditClip::frames},
            {RenderSnapshot(), 0}};
        for (const auto &request : wrong) {
            FrameRenderer renderer;
            QVERIFY(renderer.preview(request.first, request.second).isNull());
            QVERIFY(renderer.cutout(request.first, request.second).isNull());
            QVERIFY(renderer.matte(request.first, request.second).isNull());
            QVERIFY(!renderer.errorString().isEmpty());
        }
    }

private:
    std::optional<EditBench> bench;
};

ZK_TEST_MAIN(ZkFrameRendererTest)
#include "ZkFrameRendererTest.moc"
