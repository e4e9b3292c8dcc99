#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>

class QPainter;
class ZkStudioTimelinePresenter;

namespace zk::timeline {

class Filmstrip;

// The rows of the canvas, in widget pixels.
struct CanvasRows
{
    static constexpr int leastHeight = 116;
    static constexpr int goodHeight = 140;

    explicit CanvasRows(const QSize &size);

    QRectF ruler;
    QRectF nodes;
    QRectF strip;
    QRectF band; // the tracked range
};

struct CanvasColors
{
    static CanvasColors ofSkin();

    QColor background;
    QColor ruler;
    QColor tick;
    QColor text;
    QColor playhead;
    QColor node;
    QColor strip; // where no picture is yet, and the band where nothing is tracked
    QColor tracked; // with full confidence
    QColor doubt;
    QColor focus;
};

// How the canvas looks at the moment.
struct CanvasLook
{
    QFont font;
    qint64 hoveredNode = -1;
    bool isDoubtHovered = false;
    bool hasFocus = false;
};

// Paints what a presenter shows.
class TimelinePainter
{
public:
    TimelinePainter(QPainter *painter,
                    const ZkStudioTimelinePresenter &presenter,
                    const QSize &size,
                    const CanvasColors &colors,
                    const CanvasLook &look);

    // Everything that may be seen in the exposed rectangle.
    void paint(const QRectF &exposed, const Filmstrip &filmstrip);

    // What a move of the playhead from or to that frame changes.
    static QRectF
    playheadArea(const ZkStudioTimelinePresenter &presenter, qint64 frame, const QSize &size);
    static constexpr double nodeReach = 8; // from a node's middle, for the pointer
    // Where the pointer meets the mark of the frame to correct; empty when there is none.
    static QRectF doubtArea(const ZkStudioTimelinePresenter &presenter, const QSize &size);

private:
    void paintRuler();
    void paintTick(qint64 frame, bool isMajor);
    void paintStrip(const Filmstrip &filmstrip);
    void paintBand();
    void paintNodes();
    void paintNode(qint64 frame);
    void paintDoubt();
    void paintPlayhead();
    void paintFocus();

    QPainter *const m_painter;
    const ZkStudioTimelinePresenter &m_presenter;
    const QRectF m_area;
    const CanvasRows m_rows;
    const CanvasColors m_colors;
    const CanvasLook m_look;
    QRectF m_exposed;
    double m_labelWidth = 0;
};

} // namespace zk::timeline
