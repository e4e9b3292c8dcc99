<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>EraseTexts</name>
    <message>
        <source>Preparing</source>
        <translation>正在准备</translation>
    </message>
    <message>
        <source>Erasing</source>
        <translation>正在抹除</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>正在完成</translation>
    </message>
    <message>
        <source>The folder %1 cannot be written to, or its disk is full; free some space or choose another folder.</source>
        <translation>无法写入文件夹 %1，或磁盘已满；请释放空间或选择其他文件夹。</translation>
    </message>
    <message>
        <source>%1 is no longer there; put it back and erase again.</source>
        <translation>%1 已不存在；请放回该文件后重新抹除。</translation>
    </message>
    <message>
        <source>%1 was changed after the objects were selected; check the selection and erase again.</source>
        <translation>选择对象之后 %1 已被更改；请检查选区后重新抹除。</translation>
    </message>
    <message>
        <source>%1 does not have all the frames of the clip; check the file and erase again.</source>
        <translation>%1 不包含片段的全部帧；请检查文件后重新抹除。</translation>
    </message>
    <message>
        <source>Frame %1 of %2 cannot be read; check the file and erase again.</source>
        <translation>无法读取 %2 的第 %1 帧；请检查文件后重新抹除。</translation>
    </message>
    <message>
        <source>The eraser could not read what it is to do; erase again.</source>
        <translation>抹除程序无法读取任务；请重新抹除。</translation>
    </message>
    <message>
        <source>There is not enough memory for frames of this size; close other programs and erase again.</source>
        <translation>内存不足，无法处理此尺寸的帧；请关闭其他程序后重新抹除。</translation>
    </message>
    <message>
        <source>The eraser %1 cannot be started (%2); install the program again.</source>
        <translation>无法启动抹除程序 %1（%2）；请重新安装本程序。</translation>
    </message>
    <message>
        <source>The eraser was ended from outside or crashed (signal %1), perhaps because memory ran out; close other programs and erase again.</source>
        <translation>抹除程序被外部终止或已崩溃（信号 %1），可能是内存不足；请关闭其他程序后重新抹除。</translation>
    </message>
    <message>
        <source>The eraser ended without a result (code %1); erase again.</source>
        <translation>抹除程序结束但没有结果（代码 %1）；请重新抹除。</translation>
    </message>
    <message>
        <source>The eraser failed (%1); erase again, or select less.</source>
        <translation>抹除失败（%1）；请重新抹除，或减少选择。</translation>
    </message>
</context>
<context>
    <name>ExportFormat</name>
    <message>
        <source>ProRes 4444 with transparency (.mov)</source>
        <translation>ProRes 4444，带透明通道 (.mov)</translation>
    </message>
    <message>
        <source>VP9 with transparency (.webm)</source>
        <translation>VP9，带透明通道 (.webm)</translation>
    </message>
    <message>
        <source>FFV1, lossless, with transparency (.mkv)</source>
        <translation>FFV1，无损，带透明通道 (.mkv)</translation>
    </message>
    <message>
        <source>PNG pictures with transparency</source>
        <translation>PNG 图像序列，带透明通道</translation>
    </message>
    <message>
        <source>H.264 over a background (.mp4)</source>
        <translation>H.264，带背景 (.mp4)</translation>
    </message>
</context>
<context>
    <name>Exporter</name>
    <message>
        <source>%1 is not a picture, choose a PNG or JPEG file</source>
        <translation>%1 不是图像，请选择 PNG 或 JPEG 文件</translation>
    </message>
    <message>
        <source>frame %1 cannot be read: %2</source>
        <translation>无法读取第 %1 帧：%2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>interrupted, nothing was written</source>
        <translation>已中断，未写入任何内容</translation>
    </message>
</context>
<context>
    <name>MediaEntry</name>
    <message>
        <source>%1 is missing.</source>
        <translation>%1 缺失。</translation>
    </message>
    <message>
        <source>%1 was changed since the project was saved.</source>
        <translation>%1 在项目保存后已被更改。</translation>
    </message>
    <message>
        <source>%1 cannot take the place of the file that was imported: %2</source>
        <translation>%1 无法替换已导入的文件：%2</translation>
    </message>
    <message>
        <source>its pictures have %1 x %2 pixels instead of %3 x %4.</source>
        <translation>其画面为 %1 x %2 像素，而非 %3 x %4 像素。</translation>
    </message>
    <message>
        <source>it has %1 frames per second instead of %2.</source>
        <translation>其帧速率为 %1 fps，而非 %2 fps。</translation>
    </message>
    <message>
        <source>it has only %1 frames instead of %2.</source>
        <translation>其只有 %1 帧，而非 %2 帧。</translation>
    </message>
</context>
<context>
    <name>ModelTexts</name>
    <message>
        <source>Segmentation</source>
        <translation>分割</translation>
    </message>
    <message>
        <source>Tracking</source>
        <translation>跟踪</translation>
    </message>
    <message>
        <source>Inpainting</source>
        <translation>填补</translation>
    </message>
    <message>
        <source>it is larger than 2 GB</source>
        <translation>文件大于 2 GB</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>无法读取 %1：%2。</translation>
    </message>
    <message>
        <source>%1 is a network for another purpose (%2); choose one for this (%3).</source>
        <translation>%1 是用于其他用途（%2）的网络；请选择用于此处（%3）的网络。</translation>
    </message>
    <message>
        <source>%1 and %2 are networks for the same purpose (%3); give one of them.</source>
        <translation>%1 和 %2 是用于相同用途（%3）的网络；请只指定其中一个。</translation>
    </message>
    <message>
        <source>The network cannot be used (%1), the built-in engine takes its place. %2</source>
        <translation>该网络无法使用（%1），已改用内置引擎。%2</translation>
    </message>
    <message>
        <source>this is no ONNX file, or it is damaged.</source>
        <translation>这不是 ONNX 文件，或者文件已损坏。</translation>
    </message>
    <message>
        <source>its inputs are &quot;%1&quot;. A network for segmentation has an input &quot;keep&quot;, one for tracking &quot;previous_matte&quot;, one for inpainting &quot;hole&quot;.</source>
        <translation>其输入为“%1”。用于分割的网络有输入“keep”，用于跟踪的有“previous_matte”，用于填补的有“hole”。</translation>
    </message>
    <message>
        <source>the input &quot;%1&quot; is missing; there are &quot;%2&quot;.</source>
        <translation>缺少输入“%1”；现有“%2”。</translation>
    </message>
    <message>
        <source>nothing is known of an input &quot;%1&quot;.</source>
        <translation>未知的输入“%1”。</translation>
    </message>
    <message>
        <source>the network makes no use of its input &quot;%1&quot;; export it without.</source>
        <translation>网络没有使用其输入“%1”；请去掉该输入后重新导出。</translation>
    </message>
    <message>
        <source>the output &quot;%1&quot; is missing; there are &quot;%2&quot;.</source>
        <translation>缺少输出“%1”；现有“%2”。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must have 32 bit floating point numbers.</source>
        <translation>“%1”必须是 32 位浮点数。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, and must be %3.</source>
        <translation>“%1”为 %2，必须为 %3。</translation>
    </message>
    <message>
        <source>the operator &quot;%1&quot; cannot be used here (%2).</source>
        <translation>运算“%1”在此无法使用（%2）。</translation>
    </message>
    <message>
        <source>the network cannot be used here (%1).</source>
        <translation>该网络在此无法使用（%1）。</translation>
    </message>
    <message>
        <source>the network cannot be run (%1).</source>
        <translation>该网络无法运行（%1）。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has values that are no numbers.</source>
        <translation>“%1”含有非数值。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has values of %2; they must be %3.</source>
        <translation>“%1”的值为 %2；必须为 %3。</translation>
    </message>
</context>
<context>
    <name>Preset</name>
    <message>
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>光效</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>风格</translation>
    </message>
    <message>
        <source>Chalk Doodle</source>
        <translation>粉笔涂鸦</translation>
    </message>
    <message>
        <source>Comic</source>
        <translation>漫画</translation>
    </message>
    <message>
        <source>Double Border</source>
        <translation>双层边框</translation>
    </message>
    <message>
        <source>Duotone</source>
        <translation>双色调</translation>
    </message>
    <message>
        <source>Glitch</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>Gradient Border</source>
        <translation>渐变边框</translation>
    </message>
    <message>
        <source>Neon Pulse</source>
        <translation>霓虹脉冲</translation>
    </message>
    <message>
        <source>Shockwave</source>
        <translation>冲击波</translation>
    </message>
    <message>
        <source>Solid Border</source>
        <translation>纯色边框</translation>
    </message>
    <message>
        <source>Sticker</source>
        <translation>贴纸</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>边框</translation>
    </message>
    <message>
        <source>Shadow</source>
        <translation>阴影</translation>
    </message>
    <message>
        <source>Aura</source>
        <translation>光环</translation>
    </message>
    <message>
        <source>Colour Pop</source>
        <translation>局部色彩</translation>
    </message>
    <message>
        <source>Dashed Border</source>
        <translation>虚线边框</translation>
    </message>
    <message>
        <source>Drop Shadow</source>
        <translation>投影</translation>
    </message>
    <message>
        <source>Ghost Trail</source>
        <translation>残影</translation>
    </message>
    <message>
        <source>Glow</source>
        <translation>发光</translation>
    </message>
    <message>
        <source>Neon</source>
        <translation>霓虹</translation>
    </message>
    <message>
        <source>Retro Offset</source>
        <translation>复古错位</translation>
    </message>
    <message>
        <source>Sketch Border</source>
        <translation>手绘边框</translation>
    </message>
    <message>
        <source>Spotlight</source>
        <translation>聚光灯</translation>
    </message>
    <message>
        <source>Sunset Border</source>
        <translation>日落边框</translation>
    </message>
</context>
<context>
    <name>ProjectStore</name>
    <message>
        <source>%1 cannot be saved: %2. What was saved there before is unchanged.</source>
        <translation>无法保存 %1：%2。之前保存在该处的内容保持不变。</translation>
    </message>
    <message>
        <source>the folder %1 does not exist any more; choose another one</source>
        <translation>文件夹 %1 已不存在，请选择其他文件夹</translation>
    </message>
    <message>
        <source>nothing can be written to the folder %1; choose another one</source>
        <translation>无法写入文件夹 %1，请选择其他文件夹</translation>
    </message>
    <message>
        <source>another program is saving it just now; try again</source>
        <translation>另一个程序正在保存它，请重试</translation>
    </message>
    <message>
        <source>the disk is full; free some space or choose another</source>
        <translation>磁盘已满，请释放空间或选择其他磁盘</translation>
    </message>
    <message>
        <source>what was written is not what was to be written</source>
        <translation>写入的内容与原数据不一致</translation>
    </message>
    <message>
        <source>%1 does not exist.</source>
        <translation>%1 不存在。</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>无法读取 %1：%2。</translation>
    </message>
    <message>
        <source>%1 is not a project of ZkStudio.</source>
        <translation>%1 不是 ZkStudio 项目。</translation>
    </message>
    <message>
        <source>%1 is damaged and cannot be opened. The file was not changed; if there is a backup of it, open that.</source>
        <translation>%1 已损坏，无法打开。文件未被更改；如有备份，请打开备份。</translation>
    </message>
    <message>
        <source>a newer version</source>
        <translation>更新的版本</translation>
    </message>
    <message>
        <source>%1 was saved by ZkStudio %2 (project format %3). This is ZkStudio %4, which opens formats up to %5. Install ZkStudio %2 or later to open it; the file was not changed.</source>
        <translation>%1 由 ZkStudio %2 保存（项目格式 %3）。当前为 ZkStudio %4，最高可打开格式 %5。请安装 ZkStudio %2 或更高版本后打开；文件未被更改。</translation>
    </message>
</context>
<context>
    <name>ZAIGCCreateButton</name>
    <message>
        <source>Create</source>
        <translation>创建</translation>
    </message>
</context>
<context>
    <name>ZOldMessageDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>ZkColorSelecter</name>
    <message>
        <source>Saturation and brightness</source>
        <translation>饱和度和亮度</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>色相</translation>
    </message>
    <message>
        <source>Hexadecimal value</source>
        <translation>十六进制值</translation>
    </message>
    <message>
        <source>Current colour</source>
        <translation>当前颜色</translation>
    </message>
    <message>
        <source>Choose a colour</source>
        <translation>选择颜色</translation>
    </message>
</context>
<context>
    <name>ZkDrawingWidget</name>
    <message>
        <source>Canvas</source>
        <translation>画布</translation>
    </message>
</context>
<context>
    <name>ZkFramelessDialog</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>ZkFunctionTips</name>
    <message>
        <source>Drag a box around the object that you want to remove.</source>
        <translation>在要移除的对象周围拖出一个框。</translation>
    </message>
</context>
<context>
    <name>ZkMultiCropWidget</name>
    <message>
        <source>Areas to erase</source>
        <translation>要擦除的区域</translation>
    </message>
</context>
<context>
    <name>ZkPlayerToolBarBase</name>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>Stop and go back</source>
        <translation>停止并返回</translation>
    </message>
    <message>
        <source>Previous frame</source>
        <translation>上一帧</translation>
    </message>
    <message>
        <source>Next frame</source>
        <translation>下一帧</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
</context>
<context>
    <name>ZkStudioEditController</name>
    <message>
        <source>Smart Cutout</source>
        <translation>智能抠像</translation>
    </message>
    <message>
        <source>Add mask</source>
        <translation>添加蒙版</translation>
    </message>
    <message>
        <source>Remove mask</source>
        <translation>移除蒙版</translation>
    </message>
    <message>
        <source>Erase mask</source>
        <translation>擦除蒙版</translation>
    </message>
    <message>
        <source>Set matte</source>
        <translation>设置蒙版</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>跟踪</translation>
    </message>
    <message>
        <source>Delete object</source>
        <translation>删除对象</translation>
    </message>
</context>
<context>
    <name>ZkStudioEffectList</name>
    <message>
        <source>Add effect</source>
        <translation>添加效果</translation>
    </message>
    <message>
        <source>Remove effect</source>
        <translation>移除效果</translation>
    </message>
    <message>
        <source>Enable effect</source>
        <translation>启用效果</translation>
    </message>
    <message>
        <source>Disable effect</source>
        <translation>停用效果</translation>
    </message>
</context>
<context>
    <name>ZkStudioSmartKeyingService</name>
    <message>
        <source>Invert mask</source>
        <translation>反转蒙版</translation>
    </message>
    <message>
        <source>Add area</source>
        <translation>添加区域</translation>
    </message>
    <message>
        <source>Remove area</source>
        <translation>移除区域</translation>
    </message>
    <message>
        <source>Change area</source>
        <translation>更改区域</translation>
    </message>
    <message>
        <source>Set mask</source>
        <translation>设置蒙版</translation>
    </message>
    <message>
        <source>Remove object</source>
        <translation>移除对象</translation>
    </message>
    <message>
        <source>Clear selection</source>
        <translation>清除选区</translation>
    </message>
    <message>
        <source>Discard saved selections</source>
        <translation>放弃已保存的选区</translation>
    </message>
</context>
<context>
    <name>ZkStudioTimelinePresenter</name>
    <message>
        <source>Remove segment node</source>
        <translation>移除分割节点</translation>
    </message>
    <message>
        <source>Remove segment nodes</source>
        <translation>移除多个分割节点</translation>
    </message>
</context>
<context>
    <name>ZkStudioTimelineView</name>
    <message>
        <source>Scroll the timeline</source>
        <translation>滚动时间线</translation>
    </message>
</context>
<context>
    <name>ZkTimeEditWidget</name>
    <message>
        <source>Time code</source>
        <translation>时间码</translation>
    </message>
</context>
<context>
    <name>ZkVblPlayerWidget</name>
    <message>
        <source>Picture</source>
        <translation>画面</translation>
    </message>
</context>
<context>
    <name>ZkZoomSlider</name>
    <message>
        <source>Zoom out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>缩放</translation>
    </message>
</context>
<context>
    <name>zk::app::BrushSection</name>
    <message>
        <source>%1 px</source>
        <translation>%1 像素</translation>
    </message>
    <message>
        <source>Brush width</source>
        <translation>画笔大小</translation>
    </message>
    <message>
        <source>Brush width. Also [ and ], or Ctrl and a drag on the picture.</source>
        <translation>画笔大小。也可使用 [ 和 ]，或按住 Ctrl 在画面上拖动。</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipCommands</name>
    <message>
        <source>Import Media</source>
        <translation>导入媒体</translation>
    </message>
    <message>
        <source>Videos and pictures (*.mp4 *.mov *.mkv *.webm *.avi *.m4v *.mpg *.gif *.png *.jpg *.jpeg *.bmp *.webp)</source>
        <translation>视频和图像 (*.mp4 *.mov *.mkv *.webm *.avi *.m4v *.mpg *.gif *.png *.jpg *.jpeg *.bmp *.webp)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) could not be imported</source>
        <translation>
            <numerusform>%n 个文件无法导入</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Import %n file(s)</source>
        <translation>
            <numerusform>导入 %n 个文件</numerusform>
        </translation>
    </message>
    <message>
        <source>The file is in use</source>
        <translation>文件正在使用中</translation>
    </message>
    <message>
        <source>Remove the clips that use it first.</source>
        <translation>请先移除使用它的剪辑。</translation>
    </message>
    <message>
        <source>Where is %1?</source>
        <translation>%1 在哪里？</translation>
    </message>
    <message>
        <source>The file cannot stand in for %1</source>
        <translation>该文件无法替代 %1</translation>
    </message>
    <message>
        <source>Remove cutout</source>
        <translation>移除抠像</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipList</name>
    <message>
        <source>Clips</source>
        <translation>剪辑</translation>
    </message>
    <message>
        <source>Drop videos here, or double-click one in the media list.</source>
        <translation>将视频拖到此处，或双击媒体列表中的视频。</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipListModel</name>
    <message>
        <source>%1, %2, cut out</source>
        <translation>%1，%2，已抠像</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>缺失</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipProperties</name>
    <message>
        <source>Plain cutout</source>
        <translation>普通抠像</translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n frame(s))</source>
        <translation>
            <numerusform>%1（%n 帧）</numerusform>
        </translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Look: %1</source>
        <translation>样式：%1</translation>
    </message>
    <message>
        <source>Nothing is cut out of this clip yet.</source>
        <translation>此剪辑尚未抠像。</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>尺寸</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>帧速率</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>时长</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>音频</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Choose a clip to see what it is.</source>
        <translation>选择剪辑以查看其信息。</translation>
    </message>
    <message>
        <source>Clip</source>
        <translation>剪辑</translation>
    </message>
    <message>
        <source>Smart Cutout</source>
        <translation>智能抠像</translation>
    </message>
    <message>
        <source>Show the cutout</source>
        <translation>显示抠像</translation>
    </message>
    <message>
        <source>Objects are selected to be erased.</source>
        <translation>已选择要抹除的对象。</translation>
    </message>
    <message>
        <source>Nothing is selected to be erased.</source>
        <translation>尚未选择要抹除的对象。</translation>
    </message>
    <message>
        <source>AI Erase</source>
        <translation>AI 抹除</translation>
    </message>
</context>
<context>
    <name>zk::app::CompareView</name>
    <message>
        <source>Before and after</source>
        <translation>前后对比</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>之前</translation>
    </message>
    <message>
        <source>After</source>
        <translation>之后</translation>
    </message>
</context>
<context>
    <name>zk::app::EditingPage</name>
    <message>
        <source>The file has no picture that can be read. It may have been moved, or is damaged.</source>
        <translation>文件中没有可读取的画面。文件可能已被移动或已损坏。</translation>
    </message>
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
        <source>Fit the frame</source>
        <translation>画面适合窗口</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>播放或暂停</translation>
    </message>
    <message>
        <source>Stop and return</source>
        <translation>停止并返回</translation>
    </message>
    <message>
        <source>Tracking stopped there. Paint on the new scene to go on.</source>
        <translation>跟踪在此处停止。请在新场景中绘制以继续。</translation>
    </message>
    <message>
        <source>The scene changes at %1.</source>
        <translation>场景在 %1 处切换。</translation>
    </message>
</context>
<context>
    <name>zk::app::EraseTasks</name>
    <message>
        <source>Preparing</source>
        <translation>正在准备</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>正在等待</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>正在检查</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>已完成</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>The clip was removed from the project. Undo that, or discard the result.</source>
        <translation>该片段已从项目中移除。请撤销移除，或放弃该结果。</translation>
    </message>
    <message>
        <source>%1 is no longer there; erase again.</source>
        <translation>%1 已不存在；请重新抹除。</translation>
    </message>
</context>
<context>
    <name>zk::app::ErasingBar</name>
    <message>
        <source>Close AI Erase</source>
        <translation>关闭 AI 抹除</translation>
    </message>
    <message numerus="yes">
        <source>%n saved selection(s)</source>
        <translation>
            <numerusform>%n 个已保存的选区</numerusform>
        </translation>
    </message>
    <message>
        <source>Erase</source>
        <translation>抹除</translation>
    </message>
    <message>
        <source>Erase what the saved selections mark</source>
        <translation>抹除已保存选区所标记的内容</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Give up the saved selections</source>
        <translation>放弃已保存的选区</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>zk::app::ErasingDesk</name>
    <message numerus="yes">
        <source>Give up %n erasing(s)?</source>
        <translation>
            <numerusform>放弃 %n 个抹除任务？</numerusform>
        </translation>
    </message>
    <message>
        <source>Erasings that are under way are cancelled, and results that were not saved are removed. What is selected stays in the project.</source>
        <translation>正在进行的抹除将被取消，未保存的结果将被删除。选中的内容仍保留在项目中。</translation>
    </message>
    <message>
        <source>Give Up</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Log &amp;Out %1</source>
        <translation>退出登录 %1(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Log In...</source>
        <translation>登录(&amp;L)...</translation>
    </message>
    <message>
        <source>Logged in as %1</source>
        <translation>已登录为 %1</translation>
    </message>
    <message>
        <source>Logged out</source>
        <translation>已退出登录</translation>
    </message>
    <message>
        <source>The clip shows the result. Undo brings the original back.</source>
        <translation>片段现在显示结果。撤销可恢复原始内容。</translation>
    </message>
    <message>
        <source>Nothing was erased from %1</source>
        <translation>未能从 %1 中抹除任何内容</translation>
    </message>
    <message>
        <source>Select Again</source>
        <translation>重新选择</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>%1 is done. Look at the result before you save it.</source>
        <translation>%1 已完成。请在保存前查看结果。</translation>
    </message>
    <message>
        <source>Nothing was erased from %1: %2</source>
        <translation>未能从 %1 中抹除任何内容：%2</translation>
    </message>
</context>
<context>
    <name>zk::app::ErasingPage</name>
    <message>
        <source>AI Erase</source>
        <translation>AI 抹除</translation>
    </message>
    <message>
        <source>Erasing is not available now.</source>
        <translation>抹除功能当前不可用。</translation>
    </message>
    <message>
        <source>The service that erases cannot be reached. Check the connection or the installation, and try again. Your selection is kept.</source>
        <translation>无法连接抹除服务。请检查网络连接或安装，然后重试。您的选区会保留。</translation>
    </message>
    <message>
        <source>The objects could not be followed through the whole clip.</source>
        <translation>无法在整个片段中跟踪这些对象。</translation>
    </message>
    <message>
        <source>Go to the frame where the preview ends, select them there once more, and press Create again.</source>
        <translation>请转到预览结束的那一帧，在那里再次选择对象，然后再次点击“创建”。</translation>
    </message>
    <message>
        <source>Remove the active box</source>
        <translation>移除当前选框</translation>
    </message>
    <message>
        <source>Nothing can be erased from “%1”.</source>
        <translation>无法从“%1”中抹除内容。</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>继续编辑</translation>
    </message>
    <message>
        <source>Keep the Selection</source>
        <translation>保留选区</translation>
    </message>
    <message>
        <source>Keep what is selected?</source>
        <translation>保留所选内容？</translation>
    </message>
    <message>
        <source>A selection that is kept is there when AI Erase is opened on this clip again. Nothing has been erased yet.</source>
        <translation>保留的选区会在再次对该片段打开 AI 抹除时恢复。目前尚未抹除任何内容。</translation>
    </message>
    <message>
        <source>Select objects to erase</source>
        <translation>选择要抹除的对象</translation>
    </message>
    <message>
        <source>The objects were followed up to there. If they are in the other scene, too, select them there first.</source>
        <translation>已跟踪对象到此处。如果另一场景中也有这些对象，请先在那里选择它们。</translation>
    </message>
    <message>
        <source>Select More</source>
        <translation>继续选择</translation>
    </message>
    <message>
        <source>Erase Now</source>
        <translation>立即抹除</translation>
    </message>
</context>
<context>
    <name>zk::app::ExportDialog</name>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>在文件夹中显示</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>导出(&amp;E)</translation>
    </message>
    <message>
        <source>Replace what is there?</source>
        <translation>是否替换现有内容？</translation>
    </message>
    <message>
        <source>This exists already:</source>
        <translation>以下内容已存在：</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>替换</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Cancelled. Nothing incomplete was left behind.</source>
        <translation>已取消。未留下任何不完整的文件。</translation>
    </message>
    <message>
        <source>The export failed</source>
        <translation>导出失败</translation>
    </message>
    <message>
        <source>Cancelling...</source>
        <translation>正在取消...</translation>
    </message>
    <message numerus="yes">
        <source>%n clip(s) exported.</source>
        <translation>
            <numerusform>已导出 %n 个剪辑。</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::ExportForm</name>
    <message>
        <source>Write the matte only</source>
        <translation>仅写入遮罩</translation>
    </message>
    <message>
        <source>&amp;Clip</source>
        <translation>剪辑(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>格式(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Save to</source>
        <translation>保存到(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Background</source>
        <translation>背景(&amp;B)</translation>
    </message>
    <message>
        <source>Clip</source>
        <translation>剪辑</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>All clips, a file each</source>
        <translation>所有剪辑，每个剪辑一个文件</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>浏览...</translation>
    </message>
    <message>
        <source>Save to</source>
        <translation>保存到</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>黑色</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>颜色</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>画面</translation>
    </message>
    <message>
        <source>Choose the colour</source>
        <translation>选择颜色</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>选择...</translation>
    </message>
    <message>
        <source>There is no clip to export.</source>
        <translation>没有可导出的剪辑。</translation>
    </message>
    <message numerus="yes">
        <source>%n clip(s), each in its own size and rate</source>
        <translation>
            <numerusform>%n 个剪辑，各自保持原尺寸和帧速率</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n frame(s)</source>
        <translation>
            <numerusform>%n 帧</numerusform>
        </translation>
    </message>
    <message>
        <source>with sound</source>
        <translation>含音频</translation>
    </message>
    <message>
        <source>without sound</source>
        <translation>无音频</translation>
    </message>
    <message>
        <source>nothing is cut out</source>
        <translation>未抠像</translation>
    </message>
    <message>
        <source>-cutout</source>
        <translation>-抠像</translation>
    </message>
    <message>
        <source>What is written needs no background.</source>
        <translation>此输出不需要背景。</translation>
    </message>
    <message>
        <source>Folder for the Pictures</source>
        <translation>图像文件夹</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>Background Picture</source>
        <translation>背景图像</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg *.bmp *.webp)</source>
        <translation>图像 (*.png *.jpg *.jpeg *.bmp *.webp)</translation>
    </message>
</context>
<context>
    <name>zk::app::Format</name>
    <message>
        <source>%1 × %2</source>
        <translation>%1 × %2</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 fps</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation>剩余 %1 秒</translation>
    </message>
    <message>
        <source>%1 min %2 s left</source>
        <translation>剩余 %1 分 %2 秒</translation>
    </message>
</context>
<context>
    <name>zk::app::Language</name>
    <message>
        <source>System language</source>
        <translation>系统语言</translation>
    </message>
</context>
<context>
    <name>zk::app::LoginDialog</name>
    <message>
        <source>Log In</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>Erasing objects needs an account. It is kept on this computer and has no password.</source>
        <translation>抹除对象需要账户。账户保存在本机，无需密码。</translation>
    </message>
    <message>
        <source>Your name</source>
        <translation>您的名字</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>zk::app::MainWindow</name>
    <message>
        <source>Presets: %1</source>
        <translation>预设：%1</translation>
    </message>
    <message>
        <source>Cancel the export?</source>
        <translation>是否取消导出？</translation>
    </message>
    <message>
        <source>An export is under way. What it has written so far is removed.</source>
        <translation>正在导出。已写入的内容将被删除。</translation>
    </message>
    <message>
        <source>Cancel the Export</source>
        <translation>取消导出</translation>
    </message>
    <message>
        <source>Importing %1</source>
        <translation>正在导入 %1</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Clip</source>
        <translation>剪辑(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation>播放(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>打开最近的项目(&amp;R)</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>工具</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
</context>
<context>
    <name>zk::app::MediaBin</name>
    <message>
        <source>Media</source>
        <translation>媒体</translation>
    </message>
    <message>
        <source>Imported videos and pictures appear here.</source>
        <translation>导入的视频和图像将显示在此处。</translation>
    </message>
</context>
<context>
    <name>zk::app::MediaBinModel</name>
    <message>
        <source>Missing</source>
        <translation>缺失</translation>
    </message>
    <message>
        <source>Picture, %1</source>
        <translation>图像，%1</translation>
    </message>
</context>
<context>
    <name>zk::app::ModelField</name>
    <message>
        <source>Built In</source>
        <translation>内置</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>选择...</translation>
    </message>
    <message>
        <source>Built in</source>
        <translation>内置</translation>
    </message>
    <message>
        <source>Choose a network: %1</source>
        <translation>选择网络：%1</translation>
    </message>
    <message>
        <source>Use the built-in engine: %1</source>
        <translation>使用内置引擎：%1</translation>
    </message>
    <message>
        <source>Choose a Network</source>
        <translation>选择网络</translation>
    </message>
    <message>
        <source>Networks (*.onnx)</source>
        <translation>网络 (*.onnx)</translation>
    </message>
    <message>
        <source>Checked. It takes pictures of any size.</source>
        <translation>已检查。接受任意尺寸的图像。</translation>
    </message>
    <message>
        <source>Checked. It takes pictures of %1 x %2 pixels.</source>
        <translation>已检查。接受 %1 x %2 像素的图像。</translation>
    </message>
</context>
<context>
    <name>zk::app::PageQuestions</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>zk::app::PresetListModel</name>
    <message>
        <source>%1, applied</source>
        <translation>%1，已应用</translation>
    </message>
    <message>
        <source>%1, will be downloaded</source>
        <translation>%1，将会下载</translation>
    </message>
    <message>
        <source>%1, downloading, %2%</source>
        <translation>%1，正在下载，%2%</translation>
    </message>
    <message>
        <source>%1, download failed</source>
        <translation>%1，下载失败</translation>
    </message>
</context>
<context>
    <name>zk::app::PresetPicker</name>
    <message>
        <source>Search presets</source>
        <translation>搜索预设</translation>
    </message>
    <message>
        <source>Cutout presets</source>
        <translation>抠像预设</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>“%1” could not be downloaded. Check the network connection.</source>
        <translation>无法下载“%1”。请检查网络连接。</translation>
    </message>
    <message>
        <source>The preset server cannot be reached. Presets on this computer can be used.</source>
        <translation>无法连接预设服务器。可使用此计算机上的预设。</translation>
    </message>
    <message>
        <source>No preset has that name.</source>
        <translation>没有该名称的预设。</translation>
    </message>
</context>
<context>
    <name>zk::app::PreviewBar</name>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>时长</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>适合</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>缩放</translation>
    </message>
</context>
<context>
    <name>zk::app::PreviewPanel</name>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Drop a clip here or press Import</source>
        <translation>将剪辑拖到此处，或点击“导入”</translation>
    </message>
    <message>
        <source>The file of &quot;%1&quot; is missing. Show where it is now to go on.</source>
        <translation>“%1”的文件缺失。请指定其当前位置以继续。</translation>
    </message>
</context>
<context>
    <name>zk::app::ProjectController</name>
    <message>
        <source>Autosave failed: %1</source>
        <translation>自动保存失败：%1</translation>
    </message>
    <message>
        <source>The project could not be saved</source>
        <translation>无法保存项目</translation>
    </message>
    <message>
        <source>Open Project</source>
        <translation>打开项目</translation>
    </message>
    <message>
        <source>ZkStudio projects (*%1)</source>
        <translation>ZkStudio 项目 (*%1)</translation>
    </message>
    <message>
        <source>The project could not be opened</source>
        <translation>无法打开项目</translation>
    </message>
    <message>
        <source>Some files of the project are missing</source>
        <translation>项目的部分文件缺失</translation>
    </message>
    <message>
        <source>Their clips are kept. Choose &quot;Relink&quot; on one to show where its file is.</source>
        <translation>这些剪辑已保留。请在剪辑上选择“重新链接”以指定文件位置。</translation>
    </message>
    <message>
        <source>Save Project</source>
        <translation>保存项目</translation>
    </message>
    <message>
        <source>Saving...</source>
        <translation>正在保存...</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>已保存</translation>
    </message>
    <message>
        <source>The project could not be recovered</source>
        <translation>无法恢复项目</translation>
    </message>
    <message>
        <source>Recovered. Save the project to keep it.</source>
        <translation>已恢复。请保存项目以保留内容。</translation>
    </message>
    <message>
        <source>There is unfinished work on %1.</source>
        <translation>%1 上有未完成的工作。</translation>
    </message>
</context>
<context>
    <name>zk::app::ProjectReading</name>
    <message>
        <source>Open Project</source>
        <translation>打开项目</translation>
    </message>
    <message>
        <source>Opening %1...</source>
        <translation>正在打开 %1...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>zk::app::Prompts</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>以及另外 %n 个</numerusform>
        </translation>
    </message>
    <message>
        <source>Save the changes to &quot;%1&quot;?</source>
        <translation>是否保存对“%1”的更改？</translation>
    </message>
    <message>
        <source>What you have changed since the last save is lost otherwise.</source>
        <translation>否则，自上次保存以来的更改将会丢失。</translation>
    </message>
</context>
<context>
    <name>zk::app::PropertyPanel</name>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Painting</source>
        <translation>绘制</translation>
    </message>
    <message>
        <source>Overlay opacity</source>
        <translation>叠加不透明度</translation>
    </message>
    <message>
        <source>How strongly the overlay colours the object</source>
        <translation>叠加颜色覆盖对象的强度</translation>
    </message>
    <message>
        <source>Cutout Effect</source>
        <translation>抠像效果</translation>
    </message>
    <message>
        <source>Show the effect</source>
        <translation>显示效果</translation>
    </message>
    <message>
        <source>Shows the frame with the effect of the preset, or without it</source>
        <translation>显示应用或不应用预设效果的画面</translation>
    </message>
    <message>
        <source>The preview modes black and transparency grid show the effect.</source>
        <translation>黑色和透明网格预览模式会显示该效果。</translation>
    </message>
</context>
<context>
    <name>zk::app::RecentFiles</name>
    <message>
        <source>Clear List</source>
        <translation>清空列表</translation>
    </message>
</context>
<context>
    <name>zk::app::RecoveryDialog</name>
    <message>
        <source>Recover Projects</source>
        <translation>恢复项目</translation>
    </message>
    <message>
        <source>Projects that can be recovered</source>
        <translation>可恢复的项目</translation>
    </message>
    <message>
        <source>ZkStudio was ended before these projects were saved.</source>
        <translation>ZkStudio 在保存这些项目之前已退出。</translation>
    </message>
    <message>
        <source>&amp;Recover</source>
        <translation>恢复(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>删除(&amp;D)</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>暂不</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>未命名</translation>
    </message>
    <message numerus="yes">
        <source>%1 – %2, %n clip(s)</source>
        <translation>
            <numerusform>%1 – %2，%n 个剪辑</numerusform>
        </translation>
    </message>
    <message>
        <source>The project&apos;s own file is newer.</source>
        <translation>项目文件本身更新。</translation>
    </message>
    <message>
        <source>Delete this autosave?</source>
        <translation>是否删除此自动保存？</translation>
    </message>
    <message>
        <source>What was not saved of the project is lost then.</source>
        <translation>项目中未保存的内容将会丢失。</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
</context>
<context>
    <name>zk::app::ResultDialog</name>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Decide Later</source>
        <translation>稍后决定</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Erased from %1</source>
        <translation>已从 %1 抹除</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>播放或暂停</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>帧</translation>
    </message>
    <message>
        <source>Drag the divider, or hold the space bar to see the original.</source>
        <translation>拖动分隔线，或按住空格键查看原始画面。</translation>
    </message>
    <message>
        <source>The clip shows the result from now on; Undo brings the original back</source>
        <translation>片段从此显示结果；撤销可恢复原始内容</translation>
    </message>
    <message>
        <source>The original can no longer be read.</source>
        <translation>无法再读取原始文件。</translation>
    </message>
    <message>
        <source>The result can no longer be read.</source>
        <translation>无法再读取结果文件。</translation>
    </message>
    <message>
        <source>The clip was changed meanwhile. Show this result all the same?</source>
        <translation>片段在此期间已更改。仍要显示此结果吗？</translation>
    </message>
    <message>
        <source>It was made of another file than the clip shows now, so that what was saved since then is not in it. Undo brings it back.</source>
        <translation>该结果所用的文件与片段当前显示的文件不同，因此不包含此后保存的更改。撤销可将其恢复。</translation>
    </message>
    <message>
        <source>The result cannot be saved.</source>
        <translation>无法保存结果。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>zk::app::SettingsDialog</name>
    <message>
        <source>Note which functions I use, in a file on this computer</source>
        <translation>在此计算机的文件中记录我使用的功能</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source> s</source>
        <translation> 秒</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>从不</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>语言(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Autosave every</source>
        <translation>自动保存间隔(&amp;A)</translation>
    </message>
    <message>
        <source>The file cannot be written</source>
        <translation>无法写入文件</translation>
    </message>
    <message>
        <source>Networks (ONNX files) can take the place of the built-in engine. Workspaces use them from the next time that they are opened.</source>
        <translation>网络（ONNX 文件）可以代替内置引擎。工作区在下次打开时开始使用。</translation>
    </message>
</context>
<context>
    <name>zk::app::ShortcutsDialog</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>键盘快捷键</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>编辑器</translation>
    </message>
    <message>
        <source>Smart Cutout</source>
        <translation>智能抠像</translation>
    </message>
    <message>
        <source>About ZkStudio</source>
        <translation>关于 ZkStudio</translation>
    </message>
    <message>
        <source>ZkStudio %1</source>
        <translation>ZkStudio %1</translation>
    </message>
    <message>
        <source>Cuts objects out of videos: paint over what to keep, let it be tracked, give it a look, and export it with transparency.</source>
        <translation>从视频中抠出对象：涂抹要保留的部分，自动跟踪，套用样式，并带透明通道导出。</translation>
    </message>
    <message>
        <source>AI Erase</source>
        <translation>AI 抹除</translation>
    </message>
</context>
<context>
    <name>zk::app::TaskCard</name>
    <message>
        <source>%1: %2%</source>
        <translation>%1：%2%</translation>
    </message>
    <message>
        <source>Erasing from %1</source>
        <translation>正在从 %1 抹除</translation>
    </message>
    <message>
        <source>Why?</source>
        <translation>原因</translation>
    </message>
    <message>
        <source>Show Result</source>
        <translation>查看结果</translation>
    </message>
    <message>
        <source>Close the workspace first</source>
        <translation>请先关闭工作区</translation>
    </message>
    <message>
        <source>Take off the list</source>
        <translation>从列表中移除</translation>
    </message>
    <message>
        <source>Cancel Erasing</source>
        <translation>取消抹除</translation>
    </message>
</context>
<context>
    <name>zk::app::TaskStrip</name>
    <message>
        <source>Erasing</source>
        <translation>正在抹除</translation>
    </message>
</context>
<context>
    <name>zk::app::TimelinePanel</name>
    <message>
        <source>Timeline</source>
        <translation>时间线</translation>
    </message>
    <message>
        <source>Timeline – %1</source>
        <translation>时间线 – %1</translation>
    </message>
</context>
<context>
    <name>zk::app::UndoActions</name>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>撤销(&amp;U) %1</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>重做(&amp;R) %1</translation>
    </message>
</context>
<context>
    <name>zk::app::WindowActions</name>
    <message>
        <source>&amp;New Project</source>
        <translation>新建项目(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open Project...</source>
        <translation>打开项目(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>另存为(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Import Media...</source>
        <translation>导入媒体(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>导出(&amp;E)...</translation>
    </message>
    <message>
        <source>Se&amp;ttings...</source>
        <translation>设置(&amp;T)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>Smart &amp;Cutout</source>
        <translation>智能抠像(&amp;C)</translation>
    </message>
    <message>
        <source>Remove C&amp;utout</source>
        <translation>移除抠像(&amp;U)</translation>
    </message>
    <message>
        <source>Re&amp;link...</source>
        <translation>重新链接(&amp;L)...</translation>
    </message>
    <message>
        <source>&amp;Add to Clips</source>
        <translation>添加到剪辑(&amp;A)</translation>
    </message>
    <message>
        <source>Remove from Media</source>
        <translation>从媒体中移除</translation>
    </message>
    <message>
        <source>&amp;Remove Clip</source>
        <translation>移除剪辑(&amp;R)</translation>
    </message>
    <message>
        <source>Move Clip to the Left</source>
        <translation>将剪辑左移</translation>
    </message>
    <message>
        <source>Move Clip to the Right</source>
        <translation>将剪辑右移</translation>
    </message>
    <message>
        <source>&amp;Play or Pause</source>
        <translation>播放或暂停(&amp;P)</translation>
    </message>
    <message>
        <source>S&amp;top and Go Back</source>
        <translation>停止并返回(&amp;T)</translation>
    </message>
    <message>
        <source>P&amp;revious Frame</source>
        <translation>上一帧(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Next Frame</source>
        <translation>下一帧(&amp;N)</translation>
    </message>
    <message>
        <source>F&amp;irst Frame</source>
        <translation>第一帧(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;Last Frame</source>
        <translation>最后一帧(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Fit Picture</source>
        <translation>画面适合窗口(&amp;F)</translation>
    </message>
    <message>
        <source>Fit Ti&amp;meline</source>
        <translation>时间线适合窗口(&amp;M)</translation>
    </message>
    <message>
        <source>Zoom &amp;In Timeline</source>
        <translation>放大时间线(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out Timeline</source>
        <translation>缩小时间线(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Media</source>
        <translation>媒体(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Properties</source>
        <translation>属性(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Timeline</source>
        <translation>时间线(&amp;T)</translation>
    </message>
    <message>
        <source>F&amp;ull Screen</source>
        <translation>全屏(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Reset Layout</source>
        <translation>重置布局(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>键盘快捷键(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;About ZkStudio</source>
        <translation>关于 ZkStudio(&amp;A)</translation>
    </message>
    <message>
        <source>AI &amp;Erase</source>
        <translation>AI 抹除(&amp;E)</translation>
    </message>
</context>
<context>
    <name>zk::app::WorkspaceBar</name>
    <message>
        <source>Track Backward</source>
        <translation>向后跟踪</translation>
    </message>
    <message>
        <source>Track Both Ways</source>
        <translation>双向跟踪</translation>
    </message>
    <message>
        <source>Track Forward</source>
        <translation>向前跟踪</translation>
    </message>
    <message>
        <source>Track in Simple Mode: the direction is chosen for you</source>
        <translation>以简单模式跟踪：自动选择方向</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Discard strokes, tracking and preset</source>
        <translation>放弃笔触、跟踪和预设</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Close without changing the clip</source>
        <translation>关闭而不更改剪辑</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Save the cutout to the clip</source>
        <translation>将抠像保存到剪辑</translation>
    </message>
    <message>
        <source>Saving</source>
        <translation>正在保存</translation>
    </message>
    <message>
        <source>Tracking</source>
        <translation>正在跟踪</translation>
    </message>
    <message>
        <source>Cancel Saving</source>
        <translation>取消保存</translation>
    </message>
    <message>
        <source>Stop Tracking</source>
        <translation>停止跟踪</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>跟踪</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Check %1</source>
        <translation>检查 %1</translation>
    </message>
    <message>
        <source>Go to the frame that tracking is least certain of, from there to the next one</source>
        <translation>转到跟踪最不确定的帧，再按一次则转到下一个</translation>
    </message>
</context>
<context>
    <name>zk::app::WorkspaceHost</name>
    <message>
        <source>Your unfinished work is back. Undo takes it away.</source>
        <translation>已恢复未完成的工作。撤销可将其移除。</translation>
    </message>
</context>
<context>
    <name>zk::app::WorkspacePage</name>
    <message>
        <source>Mask areas to keep</source>
        <translation>绘制要保留的区域</translation>
    </message>
    <message>
        <source>Eraser</source>
        <translation>橡皮擦</translation>
    </message>
    <message>
        <source>Narrower brush</source>
        <translation>缩小画笔</translation>
    </message>
    <message>
        <source>Wider brush</source>
        <translation>放大画笔</translation>
    </message>
    <message>
        <source>One frame back</source>
        <translation>后退一帧</translation>
    </message>
    <message>
        <source>One frame forward</source>
        <translation>前进一帧</translation>
    </message>
    <message>
        <source>Remove the selected nodes</source>
        <translation>移除所选节点</translation>
    </message>
    <message>
        <source>Zoom into the timeline</source>
        <translation>放大时间线</translation>
    </message>
    <message>
        <source>Zoom out of the timeline</source>
        <translation>缩小时间线</translation>
    </message>
    <message>
        <source>Fit the timeline</source>
        <translation>时间线适合窗口</translation>
    </message>
    <message>
        <source>“%1” cannot be cut out.</source>
        <translation>无法对“%1”进行抠像。</translation>
    </message>
    <message>
        <source>Smart Cutout</source>
        <translation>智能抠像</translation>
    </message>
    <message>
        <source>Discard everything that was done?</source>
        <translation>是否放弃所有操作？</translation>
    </message>
    <message>
        <source>Strokes, tracking results and the effect are taken away. This cannot be undone.</source>
        <translation>笔触、跟踪结果和效果将被移除。此操作无法撤销。</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>Stop saving and close?</source>
        <translation>是否停止保存并关闭？</translation>
    </message>
    <message>
        <source>Apply the cutout before closing?</source>
        <translation>关闭前是否应用抠像？</translation>
    </message>
    <message>
        <source>What has not been applied is lost: strokes, tracking results and the effect.</source>
        <translation>未应用的内容将丢失：笔触、跟踪结果和效果。</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>继续编辑</translation>
    </message>
    <message>
        <source>The cutout could not be saved.</source>
        <translation>无法保存抠像。</translation>
    </message>
    <message>
        <source>The clip is as it was. What you have done here is kept; try again, or paint the frames anew that look wrong.</source>
        <translation>剪辑保持不变。您在此处的操作已保留；请重试，或重新绘制效果不正确的帧。</translation>
    </message>
</context>
<context>
    <name>zk::datamodel::Autosave</name>
    <message>
        <source>Another ZkStudio has recovered this project meanwhile.</source>
        <translation>另一个 ZkStudio 已恢复此项目。</translation>
    </message>
</context>
<context>
    <name>zk::datamodel::Project</name>
    <message>
        <source>Untitled</source>
        <translation>未命名</translation>
    </message>
    <message>
        <source>%1 holds contradictory data and cannot be opened. The file was not changed.</source>
        <translation>%1 包含相互矛盾的数据，无法打开。文件未被更改。</translation>
    </message>
    <message>
        <source>Import media</source>
        <translation>导入媒体</translation>
    </message>
    <message>
        <source>Remove media</source>
        <translation>移除媒体</translation>
    </message>
    <message>
        <source>Add clip</source>
        <translation>添加剪辑</translation>
    </message>
    <message>
        <source>Remove clip</source>
        <translation>移除剪辑</translation>
    </message>
    <message>
        <source>Move clip</source>
        <translation>移动剪辑</translation>
    </message>
    <message>
        <source>%1 does not fit: %2</source>
        <translation>%1 不匹配：%2</translation>
    </message>
    <message>
        <source>Restore unfinished work</source>
        <translation>恢复未完成的工作</translation>
    </message>
    <message>
        <source>Erase objects</source>
        <translation>抹除对象</translation>
    </message>
</context>
<context>
    <name>zk::media</name>
    <message>
        <source>%1 does not exist; check the path.</source>
        <translation>%1 不存在，请检查路径。</translation>
    </message>
    <message>
        <source>%1 is a folder; choose a file in it.</source>
        <translation>%1 是文件夹，请选择其中的文件。</translation>
    </message>
    <message>
        <source>%1 cannot be read; ask its owner for permission.</source>
        <translation>无法读取 %1，请向其所有者申请权限。</translation>
    </message>
    <message>
        <source>%1 is empty; copy or download it again.</source>
        <translation>%1 为空，请重新复制或下载。</translation>
    </message>
    <message>
        <source>%1 names no format that can be written; end it in .mov (ProRes 4444), .webm (VP9), .mkv (FFV1), .mp4 (H.264, no alpha), or %05d.png for a sequence of pictures.</source>
        <translation>%1 不是可写入的格式，请使用扩展名 .mov (ProRes 4444)、.webm (VP9)、.mkv (FFV1)、.mp4 (H.264，无 Alpha)，或使用 %05d.png 输出图像序列。</translation>
    </message>
    <message>
        <source>A picture of %1 x %2 pixels cannot be written to this output; check the size.</source>
        <translation>%1 x %2 像素的画面无法写入此输出，请检查尺寸。</translation>
    </message>
    <message>
        <source>The output is not complete: %1 of %2 frames were written; export it again.</source>
        <translation>输出不完整：已写入 %1 帧，共 %2 帧，请重新导出。</translation>
    </message>
    <message>
        <source>The disk is full; free some space or choose another folder.</source>
        <translation>磁盘已满，请释放空间或选择其他文件夹。</translation>
    </message>
    <message>
        <source>The file would become larger than the disk allows; choose another folder.</source>
        <translation>文件将超出磁盘允许的大小，请选择其他文件夹。</translation>
    </message>
    <message>
        <source>The output could not be written (%1); try another format or folder.</source>
        <translation>无法写入输出（%1），请尝试其他格式或文件夹。</translation>
    </message>
    <message>
        <source>The folder %1 does not exist; create it or choose another one.</source>
        <translation>文件夹 %1 不存在，请创建该文件夹或选择其他文件夹。</translation>
    </message>
    <message>
        <source>Nothing can be written to the folder %1; choose another one.</source>
        <translation>无法写入文件夹 %1，请选择其他文件夹。</translation>
    </message>
    <message>
        <source>The finished output cannot be put in place as %1 (%2); choose another name.</source>
        <translation>无法将完成的输出保存为 %1（%2），请选择其他名称。</translation>
    </message>
    <message>
        <source>%1 is a folder; choose a file name.</source>
        <translation>%1 是文件夹，请选择文件名。</translation>
    </message>
    <message>
        <source>A picture of the sequence could not be written (%1); choose another folder.</source>
        <translation>无法写入序列中的一个图像（%1），请选择其他文件夹。</translation>
    </message>
    <message>
        <source>The sound of %1 cannot be read (%2); choose another source or export without sound.</source>
        <translation>无法读取 %1 的音频（%2），请选择其他来源或不带音频导出。</translation>
    </message>
    <message>
        <source>The picture %1 is damaged; copy or export it again.</source>
        <translation>图像 %1 已损坏，请重新复制或导出。</translation>
    </message>
    <message>
        <source>%1 is not a video or picture that can be read, or it is damaged; choose another file or export it again.</source>
        <translation>%1 不是可读取的视频或图像，或已损坏，请选择其他文件或重新导出。</translation>
    </message>
    <message>
        <source>%1 has sound but no picture; choose a video or picture file.</source>
        <translation>%1 只有音频没有画面，请选择视频或图像文件。</translation>
    </message>
    <message>
        <source>%1 breaks off before its end; copy or download it again.</source>
        <translation>%1 在结尾前中断，请重新复制或下载。</translation>
    </message>
    <message>
        <source>The pictures cannot be written to %1; choose another folder.</source>
        <translation>无法将图片写入 %1；请选择其他文件夹。</translation>
    </message>
</context>
<context>
    <name>zk::timeline::TimelineCanvas</name>
    <message>
        <source>Timeline</source>
        <translation>时间线</translation>
    </message>
    <message>
        <source>Left and Right move the playhead, Page Up and Page Down go to segment nodes.</source>
        <translation>左、右方向键移动播放头，Page Up 和 Page Down 跳转到分割节点。</translation>
    </message>
    <message>
        <source>Segment node at %1</source>
        <translation>位于 %1 的分割节点</translation>
    </message>
    <message>
        <source>Least certain here: check this frame</source>
        <translation>此处最不确定：请检查此帧</translation>
    </message>
</context>
</TS>
