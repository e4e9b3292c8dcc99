<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ZCutoutPresetItemManager</name>
    <message>
        <source>Download failed. Please try again later.</source>
        <translation>Herunterladen fehlgeschlagen. Bitte versuchen Sie es später erneut.</translation>
    </message>
</context>
<context>
    <name>ZCutoutPresetItemModel</name>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingCropSelectorPresenter</name>
    <message>
        <source>Move Crop %1</source>
        <translation>Bereich %1 verschieben</translation>
    </message>
    <message>
        <source>Resize Crop %1</source>
        <translation>Größe von Bereich %1 ändern</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingHeaderToolBar</name>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Pan</source>
        <translation>Ansicht verschieben</translation>
    </message>
    <message>
        <source>Zoom Level - Fit:</source>
        <translation>Zoomstufe – Einpassen:</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingItemWidget</name>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingListWidget</name>
    <message>
        <source>Selected Objects</source>
        <translation>Ausgewählte Objekte</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingOverlayWidget</name>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingPlayerToolBar</name>
    <message>
        <source>Playhead Position</source>
        <translation>Position des Abspielkopfs</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingPresenter</name>
    <message>
        <source>reset</source>
        <translation>Zurücksetzen</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingPreviewEffectWidget</name>
    <message>
        <source>Preview Effect</source>
        <translation>Effekt-Vorschau</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingProgressPanel</name>
    <message>
        <source>Preview Object Tracking</source>
        <translation>Vorschau der Objektverfolgung</translation>
    </message>
    <message>
        <source>Object Tracking in progress…</source>
        <translation>Objekte werden verfolgt …</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingProgressWidget</name>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingProressDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingSettingView</name>
    <message>
        <source>Magic Box</source>
        <translation>Magic Box</translation>
    </message>
    <message>
        <source>Smart Brush</source>
        <translation>Smart-Pinsel</translation>
    </message>
    <message>
        <source>Eraser</source>
        <translation>Radierer</translation>
    </message>
    <message>
        <source>Brush Size</source>
        <translation>Pinselgröße</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Selected Objects</source>
        <translation>Ausgewählte Objekte</translation>
    </message>
    <message>
        <source>You can select the object you want to remove from the picture</source>
        <translation>Sie können das Objekt auswählen, das aus dem Bild entfernt werden soll</translation>
    </message>
    <message>
        <source>You can navigate to different times and select the objects you want to remove from the video.</source>
        <translation>Sie können zu verschiedenen Zeitpunkten gehen und die Objekte auswählen, die aus dem Video entfernt werden sollen.</translation>
    </message>
</context>
<context>
    <name>ZkAIErasingView</name>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Network error. Please try again later.</source>
        <translation>Netzwerkfehler. Bitte versuchen Sie es später noch einmal.</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingHeaderToolBar</name>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Mask Areas to Keep</source>
        <translation>Zu behaltende Bereiche markieren</translation>
    </message>
    <message>
        <source>Mask Areas to Remove</source>
        <translation>Zu entfernende Bereiche markieren</translation>
    </message>
    <message>
        <source>Eraser</source>
        <translation>Radierer</translation>
    </message>
    <message>
        <source>Pan</source>
        <translation>Ansicht verschieben</translation>
    </message>
    <message>
        <source>Invert Mask</source>
        <translation>Maske umkehren</translation>
    </message>
    <message>
        <source>Preview Mode</source>
        <translation>Vorschaumodus</translation>
    </message>
    <message>
        <source>Overlay Color</source>
        <translation>Überlagerungsfarbe</translation>
    </message>
    <message>
        <source>Toggle Alpha Overlay</source>
        <translation>Farbüberlagerung anzeigen</translation>
    </message>
    <message>
        <source>Toggle Transparency Grid</source>
        <translation>Transparenz als Schachbrett anzeigen</translation>
    </message>
    <message>
        <source>Toggle Transparency Black</source>
        <translation>Transparenz schwarz anzeigen</translation>
    </message>
    <message>
        <source>Toggle Alpha</source>
        <translation>Alphakanal anzeigen</translation>
    </message>
    <message>
        <source>Zoom Level - Fit:</source>
        <translation>Zoomstufe – Einpassen:</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingMediaPlayerWidget</name>
    <message>
        <source>Please draw mask first. Then you can start tracking.</source>
        <translation>Zeichnen Sie zuerst eine Maske. Danach können Sie das Tracking starten.</translation>
    </message>
    <message>
        <source>Track rendering failed, please try again!</source>
        <translation>Das Tracking ist fehlgeschlagen. Bitte versuchen Sie es erneut!</translation>
    </message>
    <message>
        <source>No objects to track in this direction, please select another direction.</source>
        <translation>In dieser Richtung gibt es kein Objekt zum Verfolgen. Bitte wählen Sie eine andere Richtung.</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingPlayerToolBar</name>
    <message>
        <source>Playhead Position</source>
        <translation>Position des Abspielkopfs</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom to Fit Timeline</source>
        <translation>Timeline einpassen</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingPresenter</name>
    <message>
        <source>Change pen width</source>
        <translation>Pinselgröße ändern</translation>
    </message>
</context>
<context>
    <name>ZkSmartKeyingProgressOverlayWidget</name>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
</context>
<context>
    <name>ZkZoomLevelBox</name>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
</context>
</TS>
