<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ZCutoutPresetItemManager</name>
    <message>
        <source>Download failed. Please try again later.</source>
        <translation>下载失败，请稍后重试。</translation>
    </message>
</context>
<context>
    <name>ZCutoutPresetItemModel</name>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingCropSelectorPresenter</name>
    <message>
        <source>Move Crop %1</source>
        <translation>移动选区 %1</translation>
    </message>
    <message>
        <source>Resize Crop %1</source>
        <translation>调整选区 %1 的大小</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingHeaderToolBar</name>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>Pan</source>
        <translation>平移</translation>
    </message>
    <message>
        <source>Zoom Level - Fit:</source>
        <translation>缩放级别 - 适合窗口：</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingItemWidget</name>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingListWidget</name>
    <message>
        <source>Selected Objects</source>
        <translation>已选对象</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingOverlayWidget</name>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingPlayerToolBar</name>
    <message>
        <source>Playhead Position</source>
        <translation>播放头位置</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>时长</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingPresenter</name>
    <message>
        <source>reset</source>
        <translation>重置</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingPreviewEffectWidget</name>
    <message>
        <source>Preview Effect</source>
        <translation>预览效果</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingProgressPanel</name>
    <message>
        <source>Preview Object Tracking</source>
        <translation>预览对象跟踪</translation>
    </message>
    <message>
        <source>Object Tracking in progress…</source>
        <translation>正在跟踪对象…</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingProgressWidget</name>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingProressDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingSettingView</name>
    <message>
        <source>Magic Box</source>
        <translation>魔术框</translation>
    </message>
    <message>
        <source>Smart Brush</source>
        <translation>智能画笔</translation>
    </message>
    <message>
        <source>Eraser</source>
        <translation>橡皮擦</translation>
    </message>
    <message>
        <source>Brush Size</source>
        <translation>画笔大小</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Selected Objects</source>
        <translation>已选对象</translation>
    </message>
    <message>
        <source>You can select the object you want to remove from the picture</source>
        <translation>您可以选择要从图片中移除的对象</translation>
    </message>
    <message>
        <source>You can navigate to different times and select the objects you want to remove from the video.</source>
        <translation>您可以跳转到不同时间，选择要从视频中移除的对象。</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingView</name>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Network error. Please try again later.</source>
        <translation>网络错误，请稍后重试。</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingHeaderToolBar</name>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>Mask Areas to Keep</source>
        <translation>绘制要保留的区域</translation>
    </message>
    <message>
        <source>Mask Areas to Remove</source>
        <translation>绘制要移除的区域</translation>
    </message>
    <message>
        <source>Eraser</source>
        <translation>橡皮擦</translation>
    </message>
    <message>
        <source>Pan</source>
        <translation>平移</translation>
    </message>
    <message>
        <source>Invert Mask</source>
        <translation>反转蒙版</translation>
    </message>
    <message>
        <source>Preview Mode</source>
        <translation>预览模式</translation>
    </message>
    <message>
        <source>Overlay Color</source>
        <translation>叠加颜色</translation>
    </message>
    <message>
        <source>Toggle Alpha Overlay</source>
        <translation>显示 Alpha 叠加</translation>
    </message>
    <message>
        <source>Toggle Transparency Grid</source>
        <translation>显示透明网格</translation>
    </message>
    <message>
        <source>Toggle Transparency Black</source>
        <translation>显示黑色背景</translation>
    </message>
    <message>
        <source>Toggle Alpha</source>
        <translation>显示 Alpha 通道</translation>
    </message>
    <message>
        <source>Zoom Level - Fit:</source>
        <translation>缩放级别 - 适合窗口：</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingMediaPlayerWidget</name>
    <message>
        <source>Please draw mask first. Then you can start tracking.</source>
        <translation>请先绘制蒙版，然后即可开始跟踪。</translation>
    </message>
    <message>
        <source>Track rendering failed, please try again!</source>
        <translation>跟踪渲染失败，请重试！</translation>
    </message>
    <message>
        <source>No objects to track in this direction, please select another direction.</source>
        <translation>此方向上没有可跟踪的对象，请选择其他方向。</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingPlayerToolBar</name>
    <message>
        <source>Playhead Position</source>
        <translation>播放头位置</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom to Fit Timeline</source>
        <translation>缩放以适合时间线</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingPresenter</name>
    <message>
        <source>Change pen width</source>
        <translation>更改画笔粗细</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingProgressOverlayWidget</name>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
</context>
<context>
    <name>ZkZoomLevelBox</name>
    <message>
        <source>Fit</source>
        <translation>适合</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
</context>
</TS>
