// Panels with rounded corners.
#pragma once

#include "../ZkCore.h"

#include <QWidget>

namespace ZKWIDGET {
enum ZkRoundType {
    RoundNone = 0,
    RoundAll = 1,
    RoundOuter = 2, // the top corners of a top area, the bottom corners of a bottom area
};
}

// A strip along the top or the bottom edge that is painted behind the children.
struct ZkRoundAreaInfo
{
    int height = 0; // widget pixels; 0: no area
    int colorType = 0; // ZKSKIN::ZkColorType
    int roundType = ZKWIDGET::RoundNone;
    int horizontalMargin = 0; // left free on either side
    int verticalMargin = 0; // left free at the outer edge
    int radius = 0;
};

class ZKWIDGETS_EXPORT ZkRoundRadiusWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ZkRoundRadiusWidget(QWidget *parent = nullptr);
    ~ZkRoundRadiusWidget() override;

    static ZkRoundAreaInfo buildRoundAreaInfo(int height,
                                              int colorType,
                                              int roundType,
                                              int horizontalMargin,
                                              int verticalMargin,
                                              int radius);
    void setRoundAreaInfo(const ZkRoundAreaInfo &top, const ZkRoundAreaInfo &bottom);
    ZkRoundAreaInfo topArea() const { return m_top; }
    ZkRoundAreaInfo bottomArea() const { return m_bottom; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ZkRoundAreaInfo m_top;
    ZkRoundAreaInfo m_bottom;
};

// The same as a view. Its parent widget is the parent view's.
class ZKWIDGETS_EXPORT ZkRoundRadiusWidgetView : public ZkRoundRadiusWidget, public ZkUIView
{
    Q_OBJECT

public:
    explicit ZkRoundRadiusWidgetView(ZkUIView *parent = nullptr);
    ~ZkRoundRadiusWidgetView() override;

    QWidget *widget() override { return this; }
};
