// Host widget library. Needs Qt and the host core alone.
#pragma once

#include "widgets/ZkBasicWidgets.h"
#include "widgets/ZkDrawing.h"
#include "widgets/ZkMultiCrop.h"
#include "widgets/ZkPlayerControl.h"
#include "widgets/ZkPlayerOverlay.h"
#include "widgets/ZkRoundRadiusWidget.h"
#include "widgets/ZkSkin.h"
#include "widgets/ZkToast.h"
#include "widgets/ZkToolBars.h"
