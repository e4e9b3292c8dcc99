#include "ZkFrameRenderer.h"

#include "EditBench.h"
#include "ZkFrameCache.h"
#include "ZkTestMain.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

using namespace zk::datamodel;
using namespace zk::test;

namespace {

const QPoint inside(20, 20);
const QPoint outside(140, 70);

// A hard mask of the left half on the frame.
void maskLeftHalf(EditBench *bench, qint64 frame)
{
    QImage matte(EditClip::instance().size(), QImage::Format_Grayscale8);
    matte.fill(0);
    for (int y = 0; y < matte.height(); ++y)
        std::fill_n(matte.scanLine(y), 80, uchar(255));
    QVERIFY(bench->controller->setMatte(frame, matte));
}

QColor clipColour(const QPoint &point, qint64 frame)
{
    return EditClip::instance().sample().frame(int(frame)).pixelColor(point);
}

bool isNear(const QColor &a, const QColor &b)
{
    return qAbs(a.red() - b.red()) <= 6 && qAbs(a.green() - b.green()) <= 6
        && qAbs(a.blue() - b.blue()) <= 6 && a.alpha() == b.alpha();
}

// Growing by 1000 px of 1080 covers the whole of a small frame.
ZkEffectPtr growingEffect()
{
    zk::effects::Look look;
    look.matte.shiftPx = 1000;
    return ZkEffectPtr(new ZkStudioEffect(look, QStringLiteral("grow")));
}

} // namespace

class ZkFrameRendererTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clipWithoutMasks();
    void previewTypes_data();
    void previewTypes();
    void framesWithoutMask();
    void lookOnlyWhileEnabled();
    void projectShowsWhatWasApplied();
    void snapshotOutlivesTheTimeline();
    void wrongFrames();
    void sharedCache();
};

void ZkFrameRendererTest::clipWithoutMasks()
{
    EditBench bench;
    bench.service()->setPreviewType(ZKSMARTKEYING::ResultPreview);
    bench.service()->setMaskInverted(true);
    for (const ZkStudioTimeline *timeline : {bench.timeline(), bench.project.get()}) {
        const RenderSnapshot snapshot(*timeline);
        QVERIFY(!snapshot.isCutOut());
        QCOMPARE(snapshot.frameCount(), qint64(EditClip::frames));
        FrameRenderer renderer;
        QVERIFY(isNear(renderer.preview(snapshot, 3).pixelColor(inside), clipColour(inside, 3)));
        QVERIFY(isNear(renderer.cutout(snapshot, 3).pixelColor(outside), clipColour(outside, 3)));
        QCOMPARE(renderer.matte(snapshot, 3).pixelColor(inside), QColor(Qt::white));
        QCOMPARE(renderer.source(snapshot, 3).format(), QImage::Format_RGBA8888);
    }
}

void ZkFrameRendererTest::previewTypes_data()
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

void ZkFrameRendererTest::previewTypes()
{
    QFETCH(int, type);
    QFETCH(bool, isInverted);
    EditBench bench;
    maskLeftHalf(&bench, 2);
    bench.service()->setPreviewType(ZKSMARTKEYING::ZkPreviewType(type));
    bench.service()->setMaskRegionColor(Qt::blue);
    bench.service()->setMaskRegionAlpha(255);
    bench.service()->setMaskInverted(isInverted);
    FrameRenderer renderer;
    const QImage picture = renderer.preview(RenderSnapshot(*bench.timeline()), 2);
    QCOMPARE(picture.format(), QImage::Format_ARGB32_Premultiplied);
    QFETCH(QColor, colourInside);
    QFETCH(QColor, colourOutside);
    QVERIFY(isNear(picture.pixelColor(inside),
                   colourInside.isValid() ? colourInside : clipColour(inside, 2)));
    QVERIFY(isNear(picture.pixelColor(outside),
                   colourOutside.isValid() ? colourOutside : clipColour(outside, 2)));
}

void ZkFrameRendererTest::framesWithoutMask()
{
    EditBench bench;
    maskLeftHalf(&bench, 2);
    FrameRenderer renderer;
    QVERIFY(isNear(renderer.preview(RenderSnapshot(*bench.timeline()), 5).pixelColor(inside),
                   clipColour(inside, 5)));
    bench.service()->setPreviewType(ZKSMARTKEYING::ResultPreview);
    const RenderSnapshot snapshot(*bench.timeline());
    QCOMPARE(renderer.preview(snapshot, 5).pixelColor(inside), QColor(Qt::black));
    QCOMPARE(renderer.cutout(snapshot, 5).pixelColor(inside).alpha(), 0);
    QCOMPARE(renderer.cutout(snapshot, 2).pixelColor(inside).alpha(), 255);
    QCOMPARE(renderer.matte(snapshot, 5).pixelColor(inside), QColor(Qt::black));
}

void ZkFrameRendererTest::lookOnlyWhileEnabled()
{
    EditBench bench;
    maskLeftHalf(&bench, 0);
    QVERIFY(bench.clip()->effects()->add(growingEffect()));
    FrameRenderer renderer;
    QCOMPARE(renderer.cutout(RenderSnapshot(*bench.timeline()), 0).pixelColor(outside).alpha(),
             255);
    QCOMPARE(renderer.matte(RenderSnapshot(*bench.timeline()), 0).pixelColor(outside),
             QColor(Qt::white));
    bench.clip()->effects()->effectAt(0)->setEnabled(false);
    QCOMPARE(renderer.cutout(RenderSnapshot(*bench.timeline()), 0).pixelColor(outside).alpha(), 0);
    // The mask stays in sight while the look is off.
    bench.service()->setMaskRegionAlpha(255);
    QCOMPARE(renderer.preview(RenderSnapshot(*bench.timeline()), 0).pixelColor(inside),
             bench.service()->maskRegionColor());
}

void ZkFrameRendererTest::projectShowsWhatWasApplied()
{
    EditBench bench;
    for (qint64 frame = 0; frame < EditClip::frames; ++frame)
        maskLeftHalf(&bench, frame);
    QVERIFY(bench.applyAndWait());
    FrameRenderer renderer;
    const RenderSnapshot applied(*bench.project);
    QVERIFY(applied.isCutOut());
    QVERIFY(isNear(renderer.preview(applied, 7).pixelColor(inside), clipColour(inside, 7)));
    QCOMPARE(renderer.preview(applied, 7).pixelColor(outside), QColor(Qt::black));
    QCOMPARE(renderer.cutout(applied, 7).pixelColor(outside).alpha(), 0);
    bench.project->clip()->effects()->effectAt(0)->setEnabled(false);
    const RenderSnapshot disabled(*bench.project);
    QVERIFY(!disabled.isCutOut());
    QCOMPARE(renderer.cutout(disabled, 7).pixelColor(outside).alpha(), 255);
}

void ZkFrameRendererTest::snapshotOutlivesTheTimeline()
{
    RenderSnapshot snapshot;
    {
        EditBench bench;
        maskLeftHalf(&bench, 1);
        snapshot = RenderSnapshot(*bench.timeline());
        bench.service()->reset();
    }
    QImage picture;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        FrameRenderer renderer;
        picture = renderer.cutout(snapshot, 1);
    }));
    thread->start();
    QVERIFY(thread->wait(10000));
    QCOMPARE(picture.pixelColor(inside).alpha(), 255);
    QCOMPARE(picture.pixelColor(outside).alpha(), 0);
}

void ZkFrameRendererTest::wrongFrames()
{
    EditBench bench;
    FrameRenderer renderer;
    const RenderSnapshot snapshot(*bench.timeline());
    for (qint64 frame : {qint64(-1), qint64(EditClip::frames)}) {
        QVERIFY(renderer.preview(snapshot, frame).isNull());
        QVERIFY(renderer.cutout(snapshot, frame).isNull());
        QVERIFY(renderer.matte(snapshot, frame).isNull());
        QVERIFY(!renderer.errorString().isEmpty());
    }
    const ZkStudioTimeline empty(ZkTimelineFormat {QSize(8, 8), 25, 1});
    QVERIFY(RenderSnapshot(empty).isNull());
    QVERIFY(renderer.preview(RenderSnapshot(empty), 0).isNull());
    QVERIFY(renderer.matte(RenderSnapshot(), 0).isNull());
}

void ZkFrameRendererTest::sharedCache()
{
    EditBench bench;
    const auto cache = std::make_shared<zk::media::FrameCache>(1 << 20);
    FrameRenderer first(cache);
    const RenderSnapshot snapshot(*bench.timeline());
    const QImage picture = first.source(snapshot, 4);
    QCOMPARE(cache->find(snapshot.mediaPath(), 4), picture);
    QImage marked(picture.size(), picture.format());
    marked.fill(Qt::magenta);
    cache->insert(snapshot.mediaPath(), 4, marked);
    QCOMPARE(FrameRenderer(cache).source(snapshot, 4), marked);
}

ZK_TEST_MAIN(ZkFrameRendererTest)
#include "ZkFrameRendererTest.moc"
