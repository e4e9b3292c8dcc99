<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
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
        <source>Current color</source>
        <translation>当前颜色</translation>
    </message>
    <message>
        <source>Choose a color</source>
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
    <name>presets</name>
    <message>
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>边框</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>光效</translation>
    </message>
    <message>
        <source>Shadow</source>
        <translation>阴影</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>风格</translation>
    </message>
    <message>
        <source>Aura</source>
        <translation>光环</translation>
    </message>
    <message>
        <source>Chalk Doodle</source>
        <translation>粉笔涂鸦</translation>
    </message>
    <message>
        <source>Colour Pop</source>
        <translation>局部色彩</translation>
    </message>
    <message>
        <source>Comic</source>
        <translation>漫画</translation>
    </message>
    <message>
        <source>Dashed Border</source>
        <translation>虚线边框</translation>
    </message>
    <message>
        <source>Double Border</source>
        <translation>双层边框</translation>
    </message>
    <message>
        <source>Drop Shadow</source>
        <translation>投影</translation>
    </message>
    <message>
        <source>Duotone</source>
        <translation>双色调</translation>
    </message>
    <message>
        <source>Ghost Trail</source>
        <translation>残影</translation>
    </message>
    <message>
        <source>Glitch</source>
        <translation>故障</translation>
    </message>
    <message>
        <source>Glow</source>
        <translation>发光</translation>
    </message>
    <message>
        <source>Gradient Border</source>
        <translation>渐变边框</translation>
    </message>
    <message>
        <source>Neon</source>
        <translation>霓虹</translation>
    </message>
    <message>
        <source>Neon Pulse</source>
        <translation>霓虹脉冲</translation>
    </message>
    <message>
        <source>Retro Offset</source>
        <translation>复古错位</translation>
    </message>
    <message>
        <source>Shockwave</source>
        <translation>冲击波</translation>
    </message>
    <message>
        <source>Sketch Border</source>
        <translation>手绘边框</translation>
    </message>
    <message>
        <source>Solid Border</source>
        <translation>纯色边框</translation>
    </message>
    <message>
        <source>Spotlight</source>
        <translation>聚光灯</translation>
    </message>
    <message>
        <source>Sticker</source>
        <translation>贴纸</translation>
    </message>
    <message>
        <source>Sunset Border</source>
        <translation>日落边框</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipListModel</name>
    <message>
        <source>%1, %2, cut out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Missing</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>zk::app::Format</name>
    <message>
        <source>%1 × %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 min %2 s left</source>
        <translation type="unfinished"></translation>
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
    <name>zk::app::MediaBinModel</name>
    <message>
        <source>Missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Picture, %1</source>
        <translation type="unfinished"></translation>
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
        <source>The mattes cannot be written to %1; choose another folder.</source>
        <translation>无法将遮罩写入 %1，请选择其他文件夹。</translation>
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
</context>
</TS>
