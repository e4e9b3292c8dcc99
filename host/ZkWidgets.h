// Host widget library. Needs Qt and the host core alone.
#pragma once

#include "widgets/ZkBasicWidgets.h"
#include "widgets/ZkButtons.h"
#include "widgets/ZkDialogs.h"
#include "widgets/ZkDrawing.h"
#include "widgets/ZkFunctionTips.h"
#include "widgets/ZkListWidget.h"
#include "widgets/ZkMultiCrop.h"
#include "widgets/ZkPlayerControl.h"
#include "widgets/ZkPlayerOverlay.h"
#include "widgets/ZkRoundRadiusWidget.h"
#include "widgets/ZkScreen.h"
#include "widgets/ZkSkin.h"
#include "widgets/ZkSpinBoxSlider.h"
#include "widgets/ZkToast.h"
#include "widgets/ZkToolBars.h"
#include "widgets/ZkWidgetView.h"
