// A list of rows that are widgets.
#pragma once

#include "../ZkGlobal.h"

#include <QListWidget>

// The skin's list. Up, Down, Home and End move through the rows and make them visible.
class ZKWIDGETS_EXPORT ZkListWidget : public QListWidget
{
    Q_OBJECT

public:
    explicit ZkListWidget(QWidget *parent = nullptr);
    ~ZkListWidget() override;

    // Widget pixels between two rows, and around them.
    void setItemSpacing(int pixels);
    int itemSpacing() const;
};
