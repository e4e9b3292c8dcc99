<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>EraseTexts</name>
    <message>
        <source>Preparing</source>
        <translation>Vorbereiten</translation>
    </message>
    <message>
        <source>Erasing</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Abschließen</translation>
    </message>
    <message>
        <source>The folder %1 cannot be written to, or its disk is full; free some space or choose another folder.</source>
        <translation>In den Ordner %1 kann nicht geschrieben werden, oder der Datenträger ist voll; schaffen Sie Platz oder wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>%1 is no longer there; put it back and erase again.</source>
        <translation>%1 ist nicht mehr da; legen Sie die Datei zurück und löschen Sie erneut.</translation>
    </message>
    <message>
        <source>%1 was changed after the objects were selected; check the selection and erase again.</source>
        <translation>%1 wurde geändert, nachdem die Objekte ausgewählt wurden; prüfen Sie die Auswahl und löschen Sie erneut.</translation>
    </message>
    <message>
        <source>%1 does not have all the frames of the clip; check the file and erase again.</source>
        <translation>%1 enthält nicht alle Bilder des Clips; prüfen Sie die Datei und löschen Sie erneut.</translation>
    </message>
    <message>
        <source>Frame %1 of %2 cannot be read; check the file and erase again.</source>
        <translation>Bild %1 von %2 kann nicht gelesen werden; prüfen Sie die Datei und löschen Sie erneut.</translation>
    </message>
    <message>
        <source>The eraser could not read what it is to do; erase again.</source>
        <translation>Der Auftrag zum Löschen konnte nicht gelesen werden; löschen Sie erneut.</translation>
    </message>
    <message>
        <source>There is not enough memory for frames of this size; close other programs and erase again.</source>
        <translation>Für Bilder dieser Größe reicht der Speicher nicht; schließen Sie andere Programme und löschen Sie erneut.</translation>
    </message>
    <message>
        <source>The eraser %1 cannot be started (%2); install the program again.</source>
        <translation>Das Programm zum Löschen, %1, kann nicht gestartet werden (%2); installieren Sie das Programm neu.</translation>
    </message>
    <message>
        <source>The eraser was ended from outside or crashed (signal %1), perhaps because memory ran out; close other programs and erase again.</source>
        <translation>Das Löschen wurde von außen beendet oder ist abgestürzt (Signal %1), vielleicht weil der Speicher nicht reichte; schließen Sie andere Programme und löschen Sie erneut.</translation>
    </message>
    <message>
        <source>The eraser ended without a result (code %1); erase again.</source>
        <translation>Das Löschen endete ohne Ergebnis (Code %1); löschen Sie erneut.</translation>
    </message>
    <message>
        <source>The eraser failed (%1); erase again, or select less.</source>
        <translation>Das Löschen ist fehlgeschlagen (%1); löschen Sie erneut oder wählen Sie weniger aus.</translation>
    </message>
</context>
<context>
    <name>ExportFormat</name>
    <message>
        <source>ProRes 4444 with transparency (.mov)</source>
        <translation>ProRes 4444 mit Transparenz (.mov)</translation>
    </message>
    <message>
        <source>VP9 with transparency (.webm)</source>
        <translation>VP9 mit Transparenz (.webm)</translation>
    </message>
    <message>
        <source>FFV1, lossless, with transparency (.mkv)</source>
        <translation>FFV1, verlustfrei, mit Transparenz (.mkv)</translation>
    </message>
    <message>
        <source>PNG pictures with transparency</source>
        <translation>PNG-Bilder mit Transparenz</translation>
    </message>
    <message>
        <source>H.264 over a background (.mp4)</source>
        <translation>H.264 vor einem Hintergrund (.mp4)</translation>
    </message>
</context>
<context>
    <name>Exporter</name>
    <message>
        <source>%1 is not a picture, choose a PNG or JPEG file</source>
        <translation>%1 ist kein Bild; wählen Sie eine PNG- oder JPEG-Datei</translation>
    </message>
    <message>
        <source>frame %1 cannot be read: %2</source>
        <translation>Bild %1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>interrupted, nothing was written</source>
        <translation>abgebrochen, es wurde nichts geschrieben</translation>
    </message>
</context>
<context>
    <name>MediaEntry</name>
    <message>
        <source>%1 is missing.</source>
        <translation>%1 fehlt.</translation>
    </message>
    <message>
        <source>%1 was changed since the project was saved.</source>
        <translation>%1 wurde seit dem Speichern des Projekts verändert.</translation>
    </message>
    <message>
        <source>%1 cannot take the place of the file that was imported: %2</source>
        <translation>%1 kann die importierte Datei nicht ersetzen: %2</translation>
    </message>
    <message>
        <source>its pictures have %1 x %2 pixels instead of %3 x %4.</source>
        <translation>ihre Bilder haben %1 x %2 statt %3 x %4 Pixel.</translation>
    </message>
    <message>
        <source>it has %1 frames per second instead of %2.</source>
        <translation>sie hat %1 statt %2 Bilder pro Sekunde.</translation>
    </message>
    <message>
        <source>it has only %1 frames instead of %2.</source>
        <translation>sie hat nur %1 statt %2 Bilder.</translation>
    </message>
</context>
<context>
    <name>ModelTexts</name>
    <message>
        <source>Segmentation</source>
        <translation>Segmentierung</translation>
    </message>
    <message>
        <source>Tracking</source>
        <translation>Tracking</translation>
    </message>
    <message>
        <source>Inpainting</source>
        <translation>Auffüllen</translation>
    </message>
    <message>
        <source>it is larger than 2 GB</source>
        <translation>sie ist größer als 2 GB</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>%1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>%1 is a network for another purpose (%2); choose one for this (%3).</source>
        <translation>%1 ist ein Netz für einen anderen Zweck (%2); wählen Sie eines für diesen (%3).</translation>
    </message>
    <message>
        <source>%1 and %2 are networks for the same purpose (%3); give one of them.</source>
        <translation>%1 und %2 sind Netze für denselben Zweck (%3); geben Sie eines davon an.</translation>
    </message>
    <message>
        <source>The network cannot be used (%1), the built-in engine takes its place. %2</source>
        <translation>Das Netz ist nicht verwendbar (%1), das eingebaute Verfahren tritt an seine Stelle. %2</translation>
    </message>
    <message>
        <source>this is no ONNX file, or it is damaged.</source>
        <translation>das ist keine ONNX-Datei, oder sie ist beschädigt.</translation>
    </message>
    <message>
        <source>its inputs are &quot;%1&quot;. A network for segmentation has an input &quot;keep&quot;, one for tracking &quot;previous_matte&quot;, one for inpainting &quot;hole&quot;.</source>
        <translation>seine Eingänge sind „%1“. Ein Netz zum Segmentieren hat einen Eingang „keep“, eines zum Tracking „previous_matte“, eines zum Auffüllen „hole“.</translation>
    </message>
    <message>
        <source>the input &quot;%1&quot; is missing; there are &quot;%2&quot;.</source>
        <translation>der Eingang „%1“ fehlt; vorhanden sind „%2“.</translation>
    </message>
    <message>
        <source>nothing is known of an input &quot;%1&quot;.</source>
        <translation>ein Eingang „%1“ ist nicht bekannt.</translation>
    </message>
    <message>
        <source>the network makes no use of its input &quot;%1&quot;; export it without.</source>
        <translation>das Netz verwendet seinen Eingang „%1“ nicht; exportieren Sie es ohne ihn.</translation>
    </message>
    <message>
        <source>the output &quot;%1&quot; is missing; there are &quot;%2&quot;.</source>
        <translation>der Ausgang „%1“ fehlt; vorhanden sind „%2“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must have 32 bit floating point numbers.</source>
        <translation>„%1“ muss aus Gleitkommazahlen mit 32 Bit bestehen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, and must be %3.</source>
        <translation>„%1“ ist %2 und muss %3 sein.</translation>
    </message>
    <message>
        <source>the operator &quot;%1&quot; cannot be used here (%2).</source>
        <translation>der Operator „%1“ ist hier nicht verwendbar (%2).</translation>
    </message>
    <message>
        <source>the network cannot be used here (%1).</source>
        <translation>das Netz ist hier nicht verwendbar (%1).</translation>
    </message>
    <message>
        <source>the network cannot be run (%1).</source>
        <translation>das Netz lässt sich nicht ausführen (%1).</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has values that are no numbers.</source>
        <translation>„%1“ enthält Werte, die keine Zahlen sind.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has values of %2; they must be %3.</source>
        <translation>„%1“ hat Werte von %2; erlaubt sind %3.</translation>
    </message>
</context>
<context>
    <name>Preset</name>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Licht</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>Stil</translation>
    </message>
    <message>
        <source>Chalk Doodle</source>
        <translation>Kreideskizze</translation>
    </message>
    <message>
        <source>Comic</source>
        <translation>Comic</translation>
    </message>
    <message>
        <source>Double Border</source>
        <translation>Doppelter Rand</translation>
    </message>
    <message>
        <source>Duotone</source>
        <translation>Duplex</translation>
    </message>
    <message>
        <source>Glitch</source>
        <translation>Glitch</translation>
    </message>
    <message>
        <source>Gradient Border</source>
        <translation>Rand mit Verlauf</translation>
    </message>
    <message>
        <source>Neon Pulse</source>
        <translation>Pulsierendes Neon</translation>
    </message>
    <message>
        <source>Shockwave</source>
        <translation>Schockwelle</translation>
    </message>
    <message>
        <source>Solid Border</source>
        <translation>Einfarbiger Rand</translation>
    </message>
    <message>
        <source>Sticker</source>
        <translation>Aufkleber</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>Shadow</source>
        <translation>Schatten</translation>
    </message>
    <message>
        <source>Aura</source>
        <translation>Aura</translation>
    </message>
    <message>
        <source>Colour Pop</source>
        <translation>Farbakzent</translation>
    </message>
    <message>
        <source>Dashed Border</source>
        <translation>Gestrichelter Rand</translation>
    </message>
    <message>
        <source>Drop Shadow</source>
        <translation>Schattenwurf</translation>
    </message>
    <message>
        <source>Ghost Trail</source>
        <translation>Nachbild</translation>
    </message>
    <message>
        <source>Glow</source>
        <translation>Leuchten</translation>
    </message>
    <message>
        <source>Neon</source>
        <translation>Neon</translation>
    </message>
    <message>
        <source>Retro Offset</source>
        <translation>Retro-Versatz</translation>
    </message>
    <message>
        <source>Sketch Border</source>
        <translation>Skizzierter Rand</translation>
    </message>
    <message>
        <source>Spotlight</source>
        <translation>Spotlicht</translation>
    </message>
    <message>
        <source>Sunset Border</source>
        <translation>Rand in Abendrot</translation>
    </message>
</context>
<context>
    <name>ProjectStore</name>
    <message>
        <source>%1 cannot be saved: %2. What was saved there before is unchanged.</source>
        <translation>%1 kann nicht gespeichert werden: %2. Was dort zuvor gespeichert war, ist unverändert.</translation>
    </message>
    <message>
        <source>the folder %1 does not exist any more; choose another one</source>
        <translation>der Ordner %1 existiert nicht mehr; wählen Sie einen anderen</translation>
    </message>
    <message>
        <source>nothing can be written to the folder %1; choose another one</source>
        <translation>in den Ordner %1 kann nicht geschrieben werden; wählen Sie einen anderen</translation>
    </message>
    <message>
        <source>another program is saving it just now; try again</source>
        <translation>ein anderes Programm speichert es gerade; versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>the disk is full; free some space or choose another</source>
        <translation>der Datenträger ist voll; schaffen Sie Platz oder wählen Sie einen anderen</translation>
    </message>
    <message>
        <source>what was written is not what was to be written</source>
        <translation>das Geschriebene stimmt nicht mit den Daten überein</translation>
    </message>
    <message>
        <source>%1 does not exist.</source>
        <translation>%1 existiert nicht.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>%1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>%1 is not a project of ZkStudio.</source>
        <translation>%1 ist kein ZkStudio-Projekt.</translation>
    </message>
    <message>
        <source>%1 is damaged and cannot be opened. The file was not changed; if there is a backup of it, open that.</source>
        <translation>%1 ist beschädigt und kann nicht geöffnet werden. Die Datei wurde nicht verändert; öffnen Sie eine Sicherungskopie, falls es eine gibt.</translation>
    </message>
    <message>
        <source>a newer version</source>
        <translation>einer neueren Version</translation>
    </message>
    <message>
        <source>%1 was saved by ZkStudio %2 (project format %3). This is ZkStudio %4, which opens formats up to %5. Install ZkStudio %2 or later to open it; the file was not changed.</source>
        <translation>%1 wurde mit ZkStudio %2 gespeichert (Projektformat %3). Dies ist ZkStudio %4, das Formate bis %5 öffnet. Installieren Sie zum Öffnen ZkStudio %2 oder neuer; die Datei wurde nicht verändert.</translation>
    </message>
</context>
<context>
    <name>ZAIGCCreateButton</name>
    <message>
        <source>Create</source>
        <translation>Erstellen</translation>
    </message>
</context>
<context>
    <name>ZOldMessageDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>ZkColorSelecter</name>
    <message>
        <source>Saturation and brightness</source>
        <translation>Sättigung und Helligkeit</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Farbton</translation>
    </message>
    <message>
        <source>Hexadecimal value</source>
        <translation>Hexadezimalwert</translation>
    </message>
    <message>
        <source>Current colour</source>
        <translation>Aktuelle Farbe</translation>
    </message>
    <message>
        <source>Choose a colour</source>
        <translation>Farbe wählen</translation>
    </message>
</context>
<context>
    <name>ZkDrawingWidget</name>
    <message>
        <source>Canvas</source>
        <translation>Zeichenfläche</translation>
    </message>
</context>
<context>
    <name>ZkFramelessDialog</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>ZkFunctionTips</name>
    <message>
        <source>Drag a box around the object that you want to remove.</source>
        <translation>Ziehen Sie einen Rahmen um das Objekt, das entfernt werden soll.</translation>
    </message>
</context>
<context>
    <name>ZkMultiCropWidget</name>
    <message>
        <source>Areas to erase</source>
        <translation>Zu entfernende Bereiche</translation>
    </message>
</context>
<context>
    <name>ZkPlayerToolBarBase</name>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Stop and go back</source>
        <translation>Stoppen und zurückspringen</translation>
    </message>
    <message>
        <source>Previous frame</source>
        <translation>Vorheriges Bild</translation>
    </message>
    <message>
        <source>Next frame</source>
        <translation>Nächstes Bild</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
</context>
<context>
    <name>ZkStudioEditController</name>
    <message>
        <source>Smart Cutout</source>
        <translation>Intelligentes Freistellen</translation>
    </message>
    <message>
        <source>Add mask</source>
        <translation>Maske hinzufügen</translation>
    </message>
    <message>
        <source>Remove mask</source>
        <translation>Maske entfernen</translation>
    </message>
    <message>
        <source>Erase mask</source>
        <translation>Maske radieren</translation>
    </message>
    <message>
        <source>Set matte</source>
        <translation>Matte setzen</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Verfolgen</translation>
    </message>
    <message>
        <source>Delete object</source>
        <translation>Objekt entfernen</translation>
    </message>
</context>
<context>
    <name>ZkStudioEffectList</name>
    <message>
        <source>Add effect</source>
        <translation>Effekt hinzufügen</translation>
    </message>
    <message>
        <source>Remove effect</source>
        <translation>Effekt entfernen</translation>
    </message>
    <message>
        <source>Enable effect</source>
        <translation>Effekt einschalten</translation>
    </message>
    <message>
        <source>Disable effect</source>
        <translation>Effekt ausschalten</translation>
    </message>
</context>
<context>
    <name>ZkStudioSmartKeyingService</name>
    <message>
        <source>Invert mask</source>
        <translation>Maske umkehren</translation>
    </message>
    <message>
        <source>Add area</source>
        <translation>Bereich hinzufügen</translation>
    </message>
    <message>
        <source>Remove area</source>
        <translation>Bereich entfernen</translation>
    </message>
    <message>
        <source>Change area</source>
        <translation>Bereich ändern</translation>
    </message>
    <message>
        <source>Set mask</source>
        <translation>Maske setzen</translation>
    </message>
    <message>
        <source>Remove object</source>
        <translation>Objekt entfernen</translation>
    </message>
    <message>
        <source>Clear selection</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message>
        <source>Discard saved selections</source>
        <translation>Gespeicherte Auswahlen verwerfen</translation>
    </message>
</context>
<context>
    <name>ZkStudioTimelinePresenter</name>
    <message>
        <source>Remove segment node</source>
        <translation>Segmentknoten entfernen</translation>
    </message>
    <message>
        <source>Remove segment nodes</source>
        <translation>Segmentknoten entfernen</translation>
    </message>
</context>
<context>
    <name>ZkStudioTimelineView</name>
    <message>
        <source>Scroll the timeline</source>
        <translation>Timeline scrollen</translation>
    </message>
</context>
<context>
    <name>ZkTimeEditWidget</name>
    <message>
        <source>Time code</source>
        <translation>Timecode</translation>
    </message>
</context>
<context>
    <name>ZkVblPlayerWidget</name>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
</context>
<context>
    <name>ZkZoomSlider</name>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
</context>
<context>
    <name>zk::app::BrushSection</name>
    <message>
        <source>%1 px</source>
        <translation>%1 px</translation>
    </message>
    <message>
        <source>Brush width</source>
        <translation>Pinselgröße</translation>
    </message>
    <message>
        <source>Brush width. Also [ and ], or Ctrl and a drag on the picture.</source>
        <translation>Pinselgröße. Auch mit [ und ] oder durch Ziehen auf dem Bild mit Strg.</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipCommands</name>
    <message>
        <source>Import Media</source>
        <translation>Medien importieren</translation>
    </message>
    <message>
        <source>Videos and pictures (*.mp4 *.mov *.mkv *.webm *.avi *.m4v *.mpg *.gif *.png *.jpg *.jpeg *.bmp *.webp)</source>
        <translation>Videos und Bilder (*.mp4 *.mov *.mkv *.webm *.avi *.m4v *.mpg *.gif *.png *.jpg *.jpeg *.bmp *.webp)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) could not be imported</source>
        <translation>
            <numerusform>%n Datei konnte nicht importiert werden</numerusform>
            <numerusform>%n Dateien konnten nicht importiert werden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Import %n file(s)</source>
        <translation>
            <numerusform>%n Datei importieren</numerusform>
            <numerusform>%n Dateien importieren</numerusform>
        </translation>
    </message>
    <message>
        <source>The file is in use</source>
        <translation>Die Datei wird verwendet</translation>
    </message>
    <message>
        <source>Remove the clips that use it first.</source>
        <translation>Entfernen Sie zuerst die Clips, die sie verwenden.</translation>
    </message>
    <message>
        <source>Where is %1?</source>
        <translation>Wo liegt %1?</translation>
    </message>
    <message>
        <source>The file cannot stand in for %1</source>
        <translation>Die Datei kann %1 nicht ersetzen</translation>
    </message>
    <message>
        <source>Remove cutout</source>
        <translation>Freistellung entfernen</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipList</name>
    <message>
        <source>Clips</source>
        <translation>Clips</translation>
    </message>
    <message>
        <source>Drop videos here, or double-click one in the media list.</source>
        <translation>Ziehen Sie Videos hierher oder doppelklicken Sie eines in der Medienliste.</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipListModel</name>
    <message>
        <source>%1, %2, cut out</source>
        <translation>%1, %2, freigestellt</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
</context>
<context>
    <name>zk::app::ClipProperties</name>
    <message>
        <source>Plain cutout</source>
        <translation>Einfache Freistellung</translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n frame(s))</source>
        <translation>
            <numerusform>%1 (%n Bild)</numerusform>
            <numerusform>%1 (%n Bilder)</numerusform>
        </translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Look: %1</source>
        <translation>Look: %1</translation>
    </message>
    <message>
        <source>Nothing is cut out of this clip yet.</source>
        <translation>Aus diesem Clip wurde noch nichts freigestellt.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Choose a clip to see what it is.</source>
        <translation>Wählen Sie einen Clip, um seine Eigenschaften zu sehen.</translation>
    </message>
    <message>
        <source>Clip</source>
        <translation>Clip</translation>
    </message>
    <message>
        <source>Smart Cutout</source>
        <translation>Intelligentes Freistellen</translation>
    </message>
    <message>
        <source>Show the cutout</source>
        <translation>Freistellung anzeigen</translation>
    </message>
    <message>
        <source>Objects are selected to be erased.</source>
        <translation>Es sind Objekte zum Löschen ausgewählt.</translation>
    </message>
    <message>
        <source>Nothing is selected to be erased.</source>
        <translation>Es ist nichts zum Löschen ausgewählt.</translation>
    </message>
    <message>
        <source>AI Erase</source>
        <translation>KI-Löschen</translation>
    </message>
</context>
<context>
    <name>zk::app::CompareView</name>
    <message>
        <source>Before and after</source>
        <translation>Vorher und nachher</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Nachher</translation>
    </message>
</context>
<context>
    <name>zk::app::EditingPage</name>
    <message>
        <source>The file has no picture that can be read. It may have been moved, or is damaged.</source>
        <translation>Die Datei enthält kein lesbares Bild. Vielleicht wurde sie verschoben oder ist beschädigt.</translation>
    </message>
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
        <source>Fit the frame</source>
        <translation>Bild einpassen</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>Wiedergabe oder Pause</translation>
    </message>
    <message>
        <source>Stop and return</source>
        <translation>Stoppen und zurückspringen</translation>
    </message>
    <message>
        <source>Tracking stopped there. Paint on the new scene to go on.</source>
        <translation>Das Tracking endet dort. Malen Sie in der neuen Szene, um fortzufahren.</translation>
    </message>
    <message>
        <source>The scene changes at %1.</source>
        <translation>Die Szene wechselt bei %1.</translation>
    </message>
</context>
<context>
    <name>zk::app::EraseTasks</name>
    <message>
        <source>Preparing</source>
        <translation>Vorbereiten</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>The clip was removed from the project. Undo that, or discard the result.</source>
        <translation>Der Clip wurde aus dem Projekt entfernt. Machen Sie das rückgängig, oder verwerfen Sie das Ergebnis.</translation>
    </message>
    <message>
        <source>%1 is no longer there; erase again.</source>
        <translation>%1 ist nicht mehr da; löschen Sie noch einmal.</translation>
    </message>
</context>
<context>
    <name>zk::app::ErasingBar</name>
    <message>
        <source>Close AI Erase</source>
        <translation>KI-Löschen schließen</translation>
    </message>
    <message numerus="yes">
        <source>%n saved selection(s)</source>
        <translation>
            <numerusform>%n gespeicherte Auswahl</numerusform>
            <numerusform>%n gespeicherte Auswahlen</numerusform>
        </translation>
    </message>
    <message>
        <source>Erase</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Erase what the saved selections mark</source>
        <translation>Löschen, was die gespeicherten Auswahlen markieren</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Give up the saved selections</source>
        <translation>Die gespeicherten Auswahlen aufgeben</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>zk::app::ErasingDesk</name>
    <message numerus="yes">
        <source>Give up %n erasing(s)?</source>
        <translation>
            <numerusform>%n Löschvorgang aufgeben?</numerusform>
            <numerusform>%n Löschvorgänge aufgeben?</numerusform>
        </translation>
    </message>
    <message>
        <source>Erasings that are under way are cancelled, and results that were not saved are removed. What is selected stays in the project.</source>
        <translation>Laufende Löschvorgänge werden abgebrochen und nicht gespeicherte Ergebnisse entfernt. Was ausgewählt ist, bleibt im Projekt.</translation>
    </message>
    <message>
        <source>Give Up</source>
        <translation>Aufgeben</translation>
    </message>
    <message>
        <source>Log &amp;Out %1</source>
        <translation>%1 &amp;abmelden</translation>
    </message>
    <message>
        <source>&amp;Log In...</source>
        <translation>An&amp;melden...</translation>
    </message>
    <message>
        <source>Logged in as %1</source>
        <translation>Angemeldet als %1</translation>
    </message>
    <message>
        <source>Logged out</source>
        <translation>Abgemeldet</translation>
    </message>
    <message>
        <source>The clip shows the result. Undo brings the original back.</source>
        <translation>Der Clip zeigt das Ergebnis. „Rückgängig“ holt das Original zurück.</translation>
    </message>
    <message>
        <source>Nothing was erased from %1</source>
        <translation>Aus %1 wurde nichts gelöscht</translation>
    </message>
    <message>
        <source>Select Again</source>
        <translation>Neu auswählen</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Noch einmal versuchen</translation>
    </message>
    <message>
        <source>%1 is done. Look at the result before you save it.</source>
        <translation>%1 ist fertig. Sehen Sie sich das Ergebnis an, bevor Sie es speichern.</translation>
    </message>
    <message>
        <source>Nothing was erased from %1: %2</source>
        <translation>Aus %1 wurde nichts gelöscht: %2</translation>
    </message>
</context>
<context>
    <name>zk::app::ErasingPage</name>
    <message>
        <source>AI Erase</source>
        <translation>KI-Löschen</translation>
    </message>
    <message>
        <source>Erasing is not available now.</source>
        <translation>Das Löschen ist zurzeit nicht verfügbar.</translation>
    </message>
    <message>
        <source>The service that erases cannot be reached. Check the connection or the installation, and try again. Your selection is kept.</source>
        <translation>Der Dienst, der löscht, ist nicht erreichbar. Prüfen Sie die Verbindung oder die Installation, und versuchen Sie es noch einmal. Ihre Auswahl bleibt erhalten.</translation>
    </message>
    <message>
        <source>The objects could not be followed through the whole clip.</source>
        <translation>Die Objekte konnten nicht durch den ganzen Clip verfolgt werden.</translation>
    </message>
    <message>
        <source>Go to the frame where the preview ends, select them there once more, and press Create again.</source>
        <translation>Gehen Sie zu dem Bild, bei dem die Vorschau endet, wählen Sie sie dort noch einmal aus, und drücken Sie wieder „Erstellen“.</translation>
    </message>
    <message>
        <source>Remove the active box</source>
        <translation>Den aktiven Rahmen entfernen</translation>
    </message>
    <message>
        <source>Nothing can be erased from “%1”.</source>
        <translation>Aus „%1“ kann nichts gelöscht werden.</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>Weiter bearbeiten</translation>
    </message>
    <message>
        <source>Keep the Selection</source>
        <translation>Auswahl behalten</translation>
    </message>
    <message>
        <source>Keep what is selected?</source>
        <translation>Die Auswahl behalten?</translation>
    </message>
    <message>
        <source>A selection that is kept is there when AI Erase is opened on this clip again. Nothing has been erased yet.</source>
        <translation>Eine Auswahl, die behalten wird, ist wieder da, wenn KI-Löschen auf diesem Clip erneut geöffnet wird. Noch ist nichts gelöscht.</translation>
    </message>
    <message>
        <source>Select objects to erase</source>
        <translation>Zu löschende Objekte auswählen</translation>
    </message>
    <message>
        <source>The objects were followed up to there. If they are in the other scene, too, select them there first.</source>
        <translation>Die Objekte wurden bis dorthin verfolgt. Sind sie auch in der anderen Szene, wählen Sie sie dort zuerst aus.</translation>
    </message>
    <message>
        <source>Select More</source>
        <translation>Mehr auswählen</translation>
    </message>
    <message>
        <source>Erase Now</source>
        <translation>Jetzt löschen</translation>
    </message>
</context>
<context>
    <name>zk::app::ExportDialog</name>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Im Ordner anzeigen</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Exportieren</translation>
    </message>
    <message>
        <source>Replace what is there?</source>
        <translation>Vorhandenes ersetzen?</translation>
    </message>
    <message>
        <source>This exists already:</source>
        <translation>Dies existiert bereits:</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Cancelled. Nothing incomplete was left behind.</source>
        <translation>Abgebrochen. Es ist nichts Unvollständiges zurückgeblieben.</translation>
    </message>
    <message>
        <source>The export failed</source>
        <translation>Der Export ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>Cancelling...</source>
        <translation>Wird abgebrochen...</translation>
    </message>
    <message numerus="yes">
        <source>%n clip(s) exported.</source>
        <translation>
            <numerusform>%n Clip exportiert.</numerusform>
            <numerusform>%n Clips exportiert.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::ExportForm</name>
    <message>
        <source>Write the matte only</source>
        <translation>Nur die Maske schreiben</translation>
    </message>
    <message>
        <source>&amp;Clip</source>
        <translation>&amp;Clip</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Format</translation>
    </message>
    <message>
        <source>&amp;Save to</source>
        <translation>&amp;Speichern unter</translation>
    </message>
    <message>
        <source>&amp;Background</source>
        <translation>&amp;Hintergrund</translation>
    </message>
    <message>
        <source>Clip</source>
        <translation>Clip</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>All clips, a file each</source>
        <translation>Alle Clips, je eine Datei</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Save to</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Choose the colour</source>
        <translation>Farbe wählen</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Auswählen...</translation>
    </message>
    <message>
        <source>There is no clip to export.</source>
        <translation>Es gibt keinen Clip zum Exportieren.</translation>
    </message>
    <message numerus="yes">
        <source>%n clip(s), each in its own size and rate</source>
        <translation>
            <numerusform>%n Clip in seiner Größe und Bildrate</numerusform>
            <numerusform>%n Clips, jeder in seiner Größe und Bildrate</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n frame(s)</source>
        <translation>
            <numerusform>%n Bild</numerusform>
            <numerusform>%n Bilder</numerusform>
        </translation>
    </message>
    <message>
        <source>with sound</source>
        <translation>mit Ton</translation>
    </message>
    <message>
        <source>without sound</source>
        <translation>ohne Ton</translation>
    </message>
    <message>
        <source>nothing is cut out</source>
        <translation>nichts freigestellt</translation>
    </message>
    <message>
        <source>-cutout</source>
        <translation>-freigestellt</translation>
    </message>
    <message>
        <source>What is written needs no background.</source>
        <translation>Dieses Format braucht keinen Hintergrund.</translation>
    </message>
    <message>
        <source>Folder for the Pictures</source>
        <translation>Ordner für die Bilder</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Background Picture</source>
        <translation>Hintergrundbild</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg *.bmp *.webp)</source>
        <translation>Bilder (*.png *.jpg *.jpeg *.bmp *.webp)</translation>
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
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation>noch %1 s</translation>
    </message>
    <message>
        <source>%1 min %2 s left</source>
        <translation>noch %1 min %2 s</translation>
    </message>
</context>
<context>
    <name>zk::app::Language</name>
    <message>
        <source>System language</source>
        <translation>Systemsprache</translation>
    </message>
</context>
<context>
    <name>zk::app::LoginDialog</name>
    <message>
        <source>Log In</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>Erasing objects needs an account. It is kept on this computer and has no password.</source>
        <translation>Zum Löschen von Objekten ist ein Konto nötig. Es bleibt auf diesem Computer und hat kein Passwort.</translation>
    </message>
    <message>
        <source>Your name</source>
        <translation>Ihr Name</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>zk::app::MainWindow</name>
    <message>
        <source>Presets: %1</source>
        <translation>Vorgaben: %1</translation>
    </message>
    <message>
        <source>Cancel the export?</source>
        <translation>Export abbrechen?</translation>
    </message>
    <message>
        <source>An export is under way. What it has written so far is removed.</source>
        <translation>Ein Export läuft. Was er bisher geschrieben hat, wird entfernt.</translation>
    </message>
    <message>
        <source>Cancel the Export</source>
        <translation>Export abbrechen</translation>
    </message>
    <message>
        <source>Importing %1</source>
        <translation>%1 wird importiert</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Clip</source>
        <translation>&amp;Clip</translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation>&amp;Wiedergabe</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
</context>
<context>
    <name>zk::app::MediaBin</name>
    <message>
        <source>Media</source>
        <translation>Medien</translation>
    </message>
    <message>
        <source>Imported videos and pictures appear here.</source>
        <translation>Importierte Videos und Bilder erscheinen hier.</translation>
    </message>
</context>
<context>
    <name>zk::app::MediaBinModel</name>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <source>Picture, %1</source>
        <translation>Bild, %1</translation>
    </message>
</context>
<context>
    <name>zk::app::ModelField</name>
    <message>
        <source>Built In</source>
        <translation>Eingebaut</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Auswählen...</translation>
    </message>
    <message>
        <source>Built in</source>
        <translation>Eingebaut</translation>
    </message>
    <message>
        <source>Choose a network: %1</source>
        <translation>Netz auswählen: %1</translation>
    </message>
    <message>
        <source>Use the built-in engine: %1</source>
        <translation>Eingebautes Verfahren verwenden: %1</translation>
    </message>
    <message>
        <source>Choose a Network</source>
        <translation>Netz auswählen</translation>
    </message>
    <message>
        <source>Networks (*.onnx)</source>
        <translation>Netze (*.onnx)</translation>
    </message>
    <message>
        <source>Checked. It takes pictures of any size.</source>
        <translation>Geprüft. Es nimmt Bilder jeder Größe.</translation>
    </message>
    <message>
        <source>Checked. It takes pictures of %1 x %2 pixels.</source>
        <translation>Geprüft. Es nimmt Bilder von %1 x %2 Pixeln.</translation>
    </message>
</context>
<context>
    <name>zk::app::PageQuestions</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>zk::app::PresetListModel</name>
    <message>
        <source>%1, applied</source>
        <translation>%1, angewendet</translation>
    </message>
    <message>
        <source>%1, will be downloaded</source>
        <translation>%1, wird heruntergeladen</translation>
    </message>
    <message>
        <source>%1, downloading, %2%</source>
        <translation>%1, wird heruntergeladen, %2 %</translation>
    </message>
    <message>
        <source>%1, download failed</source>
        <translation>%1, Herunterladen fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>zk::app::PresetPicker</name>
    <message>
        <source>Search presets</source>
        <translation>Vorgaben suchen</translation>
    </message>
    <message>
        <source>Cutout presets</source>
        <translation>Freistell-Vorgaben</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>“%1” could not be downloaded. Check the network connection.</source>
        <translation>„%1“ konnte nicht heruntergeladen werden. Prüfen Sie die Netzwerkverbindung.</translation>
    </message>
    <message>
        <source>The preset server cannot be reached. Presets on this computer can be used.</source>
        <translation>Der Vorgaben-Server ist nicht erreichbar. Vorgaben auf diesem Computer können verwendet werden.</translation>
    </message>
    <message>
        <source>No preset has that name.</source>
        <translation>Keine Vorgabe hat diesen Namen.</translation>
    </message>
</context>
<context>
    <name>zk::app::PreviewBar</name>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
</context>
<context>
    <name>zk::app::PreviewPanel</name>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Drop a clip here or press Import</source>
        <translation>Ziehen Sie einen Clip hierher oder klicken Sie auf „Importieren“</translation>
    </message>
    <message>
        <source>The file of &quot;%1&quot; is missing. Show where it is now to go on.</source>
        <translation>Die Datei von „%1“ fehlt. Zeigen Sie, wo sie jetzt liegt, um fortzufahren.</translation>
    </message>
</context>
<context>
    <name>zk::app::ProjectController</name>
    <message>
        <source>Autosave failed: %1</source>
        <translation>Automatisches Speichern fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>The project could not be saved</source>
        <translation>Das Projekt konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Open Project</source>
        <translation>Projekt öffnen</translation>
    </message>
    <message>
        <source>ZkStudio projects (*%1)</source>
        <translation>ZkStudio-Projekte (*%1)</translation>
    </message>
    <message>
        <source>The project could not be opened</source>
        <translation>Das Projekt konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Some files of the project are missing</source>
        <translation>Einige Dateien des Projekts fehlen</translation>
    </message>
    <message>
        <source>Their clips are kept. Choose &quot;Relink&quot; on one to show where its file is.</source>
        <translation>Ihre Clips bleiben erhalten. Wählen Sie bei einem Clip „Neu verknüpfen“, um zu zeigen, wo seine Datei liegt.</translation>
    </message>
    <message>
        <source>Save Project</source>
        <translation>Projekt speichern</translation>
    </message>
    <message>
        <source>Saving...</source>
        <translation>Speichern ...</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gespeichert</translation>
    </message>
    <message>
        <source>The project could not be recovered</source>
        <translation>Das Projekt konnte nicht wiederhergestellt werden</translation>
    </message>
    <message>
        <source>Recovered. Save the project to keep it.</source>
        <translation>Wiederhergestellt. Speichern Sie das Projekt, um es zu behalten.</translation>
    </message>
    <message>
        <source>There is unfinished work on %1.</source>
        <translation>Es gibt nicht abgeschlossene Arbeit an %1.</translation>
    </message>
</context>
<context>
    <name>zk::app::ProjectReading</name>
    <message>
        <source>Open Project</source>
        <translation>Projekt öffnen</translation>
    </message>
    <message>
        <source>Opening %1...</source>
        <translation>%1 wird geöffnet ...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>zk::app::Prompts</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weitere</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>Save the changes to &quot;%1&quot;?</source>
        <translation>Änderungen an „%1“ speichern?</translation>
    </message>
    <message>
        <source>What you have changed since the last save is lost otherwise.</source>
        <translation>Andernfalls geht verloren, was Sie seit dem letzten Speichern geändert haben.</translation>
    </message>
</context>
<context>
    <name>zk::app::PropertyPanel</name>
    <message>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Painting</source>
        <translation>Malen</translation>
    </message>
    <message>
        <source>Overlay opacity</source>
        <translation>Deckkraft der Überlagerung</translation>
    </message>
    <message>
        <source>How strongly the overlay colours the object</source>
        <translation>Wie stark die Überlagerung das Objekt einfärbt</translation>
    </message>
    <message>
        <source>Cutout Effect</source>
        <translation>Freistelleffekt</translation>
    </message>
    <message>
        <source>Show the effect</source>
        <translation>Effekt anzeigen</translation>
    </message>
    <message>
        <source>Shows the frame with the effect of the preset, or without it</source>
        <translation>Zeigt das Bild mit dem Effekt der Vorgabe oder ohne ihn</translation>
    </message>
    <message>
        <source>The preview modes black and transparency grid show the effect.</source>
        <translation>Die Vorschau auf Schwarz und die auf Transparenzgitter zeigen den Effekt.</translation>
    </message>
</context>
<context>
    <name>zk::app::RecentFiles</name>
    <message>
        <source>Clear List</source>
        <translation>Liste leeren</translation>
    </message>
</context>
<context>
    <name>zk::app::RecoveryDialog</name>
    <message>
        <source>Recover Projects</source>
        <translation>Projekte wiederherstellen</translation>
    </message>
    <message>
        <source>Projects that can be recovered</source>
        <translation>Projekte, die wiederhergestellt werden können</translation>
    </message>
    <message>
        <source>ZkStudio was ended before these projects were saved.</source>
        <translation>ZkStudio wurde beendet, bevor diese Projekte gespeichert wurden.</translation>
    </message>
    <message>
        <source>&amp;Recover</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Nicht jetzt</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message numerus="yes">
        <source>%1 – %2, %n clip(s)</source>
        <translation>
            <numerusform>%1 – %2, %n Clip</numerusform>
            <numerusform>%1 – %2, %n Clips</numerusform>
        </translation>
    </message>
    <message>
        <source>The project&apos;s own file is newer.</source>
        <translation>Die Projektdatei selbst ist neuer.</translation>
    </message>
    <message>
        <source>Delete this autosave?</source>
        <translation>Diese automatische Sicherung löschen?</translation>
    </message>
    <message>
        <source>What was not saved of the project is lost then.</source>
        <translation>Was vom Projekt nicht gespeichert wurde, geht dann verloren.</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>zk::app::ResultDialog</name>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Decide Later</source>
        <translation>Später entscheiden</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Erased from %1</source>
        <translation>Aus %1 gelöscht</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <translation>Wiedergabe oder Pause</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Drag the divider, or hold the space bar to see the original.</source>
        <translation>Ziehen Sie die Trennlinie, oder halten Sie die Leertaste, um das Original zu sehen.</translation>
    </message>
    <message>
        <source>The clip shows the result from now on; Undo brings the original back</source>
        <translation>Der Clip zeigt von nun an das Ergebnis; „Rückgängig“ holt das Original zurück</translation>
    </message>
    <message>
        <source>The original can no longer be read.</source>
        <translation>Das Original lässt sich nicht mehr lesen.</translation>
    </message>
    <message>
        <source>The result can no longer be read.</source>
        <translation>Das Ergebnis lässt sich nicht mehr lesen.</translation>
    </message>
    <message>
        <source>The clip was changed meanwhile. Show this result all the same?</source>
        <translation>Der Clip wurde inzwischen geändert. Dieses Ergebnis trotzdem zeigen?</translation>
    </message>
    <message>
        <source>It was made of another file than the clip shows now, so that what was saved since then is not in it. Undo brings it back.</source>
        <translation>Es wurde aus einer anderen Datei gemacht, als der Clip jetzt zeigt; was seither gespeichert wurde, ist nicht darin. „Rückgängig“ holt es zurück.</translation>
    </message>
    <message>
        <source>The result cannot be saved.</source>
        <translation>Das Ergebnis kann nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>zk::app::SettingsDialog</name>
    <message>
        <source>Note which functions I use, in a file on this computer</source>
        <translation>In einer Datei auf diesem Computer festhalten, welche Funktionen ich nutze</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>&amp;Autosave every</source>
        <translation>&amp;Automatisch speichern alle</translation>
    </message>
    <message>
        <source>The file cannot be written</source>
        <translation>Die Datei kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>Networks (ONNX files) can take the place of the built-in engine. Workspaces use them from the next time that they are opened.</source>
        <translation>Netze (ONNX-Dateien) können an die Stelle des eingebauten Verfahrens treten. Arbeitsbereiche verwenden sie ab dem nächsten Öffnen.</translation>
    </message>
</context>
<context>
    <name>zk::app::ShortcutsDialog</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Smart Cutout</source>
        <translation>Intelligentes Freistellen</translation>
    </message>
    <message>
        <source>About ZkStudio</source>
        <translation>Über ZkStudio</translation>
    </message>
    <message>
        <source>ZkStudio %1</source>
        <translation>ZkStudio %1</translation>
    </message>
    <message>
        <source>Cuts objects out of videos: paint over what to keep, let it be tracked, give it a look, and export it with transparency.</source>
        <translation>Stellt Objekte in Videos frei: Übermalen Sie, was bleiben soll, lassen Sie es verfolgen, geben Sie ihm einen Look und exportieren Sie es mit Transparenz.</translation>
    </message>
    <message>
        <source>AI Erase</source>
        <translation>KI-Löschen</translation>
    </message>
</context>
<context>
    <name>zk::app::TaskCard</name>
    <message>
        <source>%1: %2%</source>
        <translation>%1: %2 %</translation>
    </message>
    <message>
        <source>Erasing from %1</source>
        <translation>Löschen aus %1</translation>
    </message>
    <message>
        <source>Why?</source>
        <translation>Warum?</translation>
    </message>
    <message>
        <source>Show Result</source>
        <translation>Ergebnis zeigen</translation>
    </message>
    <message>
        <source>Close the workspace first</source>
        <translation>Schließen Sie zuerst den Arbeitsbereich</translation>
    </message>
    <message>
        <source>Take off the list</source>
        <translation>Aus der Liste nehmen</translation>
    </message>
    <message>
        <source>Cancel Erasing</source>
        <translation>Löschen abbrechen</translation>
    </message>
</context>
<context>
    <name>zk::app::TaskStrip</name>
    <message>
        <source>Erasing</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>zk::app::TimelinePanel</name>
    <message>
        <source>Timeline</source>
        <translation>Timeline</translation>
    </message>
    <message>
        <source>Timeline – %1</source>
        <translation>Timeline – %1</translation>
    </message>
</context>
<context>
    <name>zk::app::UndoActions</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>%1 &amp;rückgängig machen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>%1 &amp;wiederholen</translation>
    </message>
</context>
<context>
    <name>zk::app::WindowActions</name>
    <message>
        <source>&amp;New Project</source>
        <translation>&amp;Neues Projekt</translation>
    </message>
    <message>
        <source>&amp;Open Project...</source>
        <translation>Projekt ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>&amp;Import Media...</source>
        <translation>Medien &amp;importieren...</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>&amp;Exportieren...</translation>
    </message>
    <message>
        <source>Se&amp;ttings...</source>
        <translation>Eins&amp;tellungen...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Smart &amp;Cutout</source>
        <translation>Intelligentes &amp;Freistellen</translation>
    </message>
    <message>
        <source>Remove C&amp;utout</source>
        <translation>Freistellung en&amp;tfernen</translation>
    </message>
    <message>
        <source>Re&amp;link...</source>
        <translation>Neu &amp;verknüpfen...</translation>
    </message>
    <message>
        <source>&amp;Add to Clips</source>
        <translation>Zu &amp;Clips hinzufügen</translation>
    </message>
    <message>
        <source>Remove from Media</source>
        <translation>Aus Medien entfernen</translation>
    </message>
    <message>
        <source>&amp;Remove Clip</source>
        <translation>Clip &amp;entfernen</translation>
    </message>
    <message>
        <source>Move Clip to the Left</source>
        <translation>Clip nach links verschieben</translation>
    </message>
    <message>
        <source>Move Clip to the Right</source>
        <translation>Clip nach rechts verschieben</translation>
    </message>
    <message>
        <source>&amp;Play or Pause</source>
        <translation>&amp;Wiedergabe oder Pause</translation>
    </message>
    <message>
        <source>S&amp;top and Go Back</source>
        <translation>S&amp;toppen und zurückspringen</translation>
    </message>
    <message>
        <source>P&amp;revious Frame</source>
        <translation>&amp;Vorheriges Bild</translation>
    </message>
    <message>
        <source>&amp;Next Frame</source>
        <translation>&amp;Nächstes Bild</translation>
    </message>
    <message>
        <source>F&amp;irst Frame</source>
        <translation>&amp;Erstes Bild</translation>
    </message>
    <message>
        <source>&amp;Last Frame</source>
        <translation>&amp;Letztes Bild</translation>
    </message>
    <message>
        <source>&amp;Fit Picture</source>
        <translation>Bild ein&amp;passen</translation>
    </message>
    <message>
        <source>Fit Ti&amp;meline</source>
        <translation>Ti&amp;meline einpassen</translation>
    </message>
    <message>
        <source>Zoom &amp;In Timeline</source>
        <translation>In Timeline &amp;hineinzoomen</translation>
    </message>
    <message>
        <source>Zoom &amp;Out Timeline</source>
        <translation>Aus Timeline her&amp;auszoomen</translation>
    </message>
    <message>
        <source>&amp;Media</source>
        <translation>Me&amp;dien</translation>
    </message>
    <message>
        <source>&amp;Properties</source>
        <translation>&amp;Eigenschaften</translation>
    </message>
    <message>
        <source>&amp;Timeline</source>
        <translation>&amp;Timeline</translation>
    </message>
    <message>
        <source>F&amp;ull Screen</source>
        <translation>&amp;Vollbild</translation>
    </message>
    <message>
        <source>&amp;Reset Layout</source>
        <translation>Layout &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>&amp;Tastenkürzel</translation>
    </message>
    <message>
        <source>&amp;About ZkStudio</source>
        <translation>Ü&amp;ber ZkStudio</translation>
    </message>
    <message>
        <source>AI &amp;Erase</source>
        <translation>KI-&amp;Löschen</translation>
    </message>
</context>
<context>
    <name>zk::app::WorkspaceBar</name>
    <message>
        <source>Track Backward</source>
        <translation>Rückwärts verfolgen</translation>
    </message>
    <message>
        <source>Track Both Ways</source>
        <translation>In beide Richtungen verfolgen</translation>
    </message>
    <message>
        <source>Track Forward</source>
        <translation>Vorwärts verfolgen</translation>
    </message>
    <message>
        <source>Track in Simple Mode: the direction is chosen for you</source>
        <translation>Im einfachen Modus verfolgen: Die Richtung wird für Sie gewählt</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Discard strokes, tracking and preset</source>
        <translation>Striche, Tracking und Vorgabe verwerfen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close without changing the clip</source>
        <translation>Schließen, ohne den Clip zu ändern</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Save the cutout to the clip</source>
        <translation>Freistellung in den Clip übernehmen</translation>
    </message>
    <message>
        <source>Saving</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Tracking</source>
        <translation>Tracking läuft</translation>
    </message>
    <message>
        <source>Cancel Saving</source>
        <translation>Speichern abbrechen</translation>
    </message>
    <message>
        <source>Stop Tracking</source>
        <translation>Tracking stoppen</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Verfolgen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Check %1</source>
        <translation>%1 prüfen</translation>
    </message>
    <message>
        <source>Go to the frame that tracking is least certain of, from there to the next one</source>
        <translation>Zum Bild gehen, bei dem das Tracking am unsichersten ist, von dort zum nächsten</translation>
    </message>
</context>
<context>
    <name>zk::app::WorkspaceHost</name>
    <message>
        <source>Your unfinished work is back. Undo takes it away.</source>
        <translation>Ihre unfertige Arbeit ist wieder da. „Rückgängig“ nimmt sie weg.</translation>
    </message>
</context>
<context>
    <name>zk::app::WorkspacePage</name>
    <message>
        <source>Mask areas to keep</source>
        <translation>Zu behaltende Bereiche markieren</translation>
    </message>
    <message>
        <source>Eraser</source>
        <translation>Radierer</translation>
    </message>
    <message>
        <source>Narrower brush</source>
        <translation>Schmalerer Pinsel</translation>
    </message>
    <message>
        <source>Wider brush</source>
        <translation>Breiterer Pinsel</translation>
    </message>
    <message>
        <source>One frame back</source>
        <translation>Ein Bild zurück</translation>
    </message>
    <message>
        <source>One frame forward</source>
        <translation>Ein Bild vor</translation>
    </message>
    <message>
        <source>Remove the selected nodes</source>
        <translation>Ausgewählte Knoten entfernen</translation>
    </message>
    <message>
        <source>Zoom into the timeline</source>
        <translation>In die Timeline hineinzoomen</translation>
    </message>
    <message>
        <source>Zoom out of the timeline</source>
        <translation>Aus der Timeline herauszoomen</translation>
    </message>
    <message>
        <source>Fit the timeline</source>
        <translation>Timeline einpassen</translation>
    </message>
    <message>
        <source>“%1” cannot be cut out.</source>
        <translation>„%1“ kann nicht freigestellt werden.</translation>
    </message>
    <message>
        <source>Smart Cutout</source>
        <translation>Intelligentes Freistellen</translation>
    </message>
    <message>
        <source>Discard everything that was done?</source>
        <translation>Alles Gemachte verwerfen?</translation>
    </message>
    <message>
        <source>Strokes, tracking results and the effect are taken away. This cannot be undone.</source>
        <translation>Striche, Tracking-Ergebnisse und der Effekt werden entfernt. Dies kann nicht rückgängig gemacht werden.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Stop saving and close?</source>
        <translation>Speichern abbrechen und schließen?</translation>
    </message>
    <message>
        <source>Apply the cutout before closing?</source>
        <translation>Freistellung vor dem Schließen anwenden?</translation>
    </message>
    <message>
        <source>What has not been applied is lost: strokes, tracking results and the effect.</source>
        <translation>Was nicht angewendet wurde, geht verloren: Striche, Tracking-Ergebnisse und der Effekt.</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Anwenden</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Keep Editing</source>
        <translation>Weiter bearbeiten</translation>
    </message>
    <message>
        <source>The cutout could not be saved.</source>
        <translation>Die Freistellung konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>The clip is as it was. What you have done here is kept; try again, or paint the frames anew that look wrong.</source>
        <translation>Der Clip ist unverändert. Ihre Arbeit hier bleibt erhalten; versuchen Sie es erneut oder malen Sie die Bilder neu, die falsch aussehen.</translation>
    </message>
</context>
<context>
    <name>zk::datamodel::Autosave</name>
    <message>
        <source>Another ZkStudio has recovered this project meanwhile.</source>
        <translation>Ein anderes ZkStudio hat dieses Projekt inzwischen wiederhergestellt.</translation>
    </message>
</context>
<context>
    <name>zk::datamodel::Project</name>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>%1 holds contradictory data and cannot be opened. The file was not changed.</source>
        <translation>%1 enthält widersprüchliche Daten und kann nicht geöffnet werden. Die Datei wurde nicht verändert.</translation>
    </message>
    <message>
        <source>Import media</source>
        <translation>Medien importieren</translation>
    </message>
    <message>
        <source>Remove media</source>
        <translation>Medien entfernen</translation>
    </message>
    <message>
        <source>Add clip</source>
        <translation>Clip hinzufügen</translation>
    </message>
    <message>
        <source>Remove clip</source>
        <translation>Clip entfernen</translation>
    </message>
    <message>
        <source>Move clip</source>
        <translation>Clip verschieben</translation>
    </message>
    <message>
        <source>%1 does not fit: %2</source>
        <translation>%1 passt nicht: %2</translation>
    </message>
    <message>
        <source>Restore unfinished work</source>
        <translation>Unfertige Arbeit wiederherstellen</translation>
    </message>
    <message>
        <source>Erase objects</source>
        <translation>Objekte löschen</translation>
    </message>
</context>
<context>
    <name>zk::media</name>
    <message>
        <source>%1 does not exist; check the path.</source>
        <translation>%1 existiert nicht; prüfen Sie den Pfad.</translation>
    </message>
    <message>
        <source>%1 is a folder; choose a file in it.</source>
        <translation>%1 ist ein Ordner; wählen Sie eine Datei darin.</translation>
    </message>
    <message>
        <source>%1 cannot be read; ask its owner for permission.</source>
        <translation>%1 kann nicht gelesen werden; bitten Sie den Eigentümer um Zugriff.</translation>
    </message>
    <message>
        <source>%1 is empty; copy or download it again.</source>
        <translation>%1 ist leer; kopieren oder laden Sie die Datei erneut.</translation>
    </message>
    <message>
        <source>%1 names no format that can be written; end it in .mov (ProRes 4444), .webm (VP9), .mkv (FFV1), .mp4 (H.264, no alpha), or %05d.png for a sequence of pictures.</source>
        <translation>%1 bezeichnet kein Format, das geschrieben werden kann; verwenden Sie die Endung .mov (ProRes 4444), .webm (VP9), .mkv (FFV1), .mp4 (H.264, ohne Alpha) oder %05d.png für eine Bildsequenz.</translation>
    </message>
    <message>
        <source>A picture of %1 x %2 pixels cannot be written to this output; check the size.</source>
        <translation>Ein Bild mit %1 x %2 Pixeln kann nicht in diese Ausgabe geschrieben werden; prüfen Sie die Größe.</translation>
    </message>
    <message>
        <source>The output is not complete: %1 of %2 frames were written; export it again.</source>
        <translation>Die Ausgabe ist unvollständig: %1 von %2 Bildern wurden geschrieben; exportieren Sie erneut.</translation>
    </message>
    <message>
        <source>The disk is full; free some space or choose another folder.</source>
        <translation>Der Datenträger ist voll; schaffen Sie Platz oder wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>The file would become larger than the disk allows; choose another folder.</source>
        <translation>Die Datei würde größer, als der Datenträger erlaubt; wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>The output could not be written (%1); try another format or folder.</source>
        <translation>Die Ausgabe konnte nicht geschrieben werden (%1); versuchen Sie ein anderes Format oder einen anderen Ordner.</translation>
    </message>
    <message>
        <source>The folder %1 does not exist; create it or choose another one.</source>
        <translation>Der Ordner %1 existiert nicht; legen Sie ihn an oder wählen Sie einen anderen.</translation>
    </message>
    <message>
        <source>Nothing can be written to the folder %1; choose another one.</source>
        <translation>In den Ordner %1 kann nicht geschrieben werden; wählen Sie einen anderen.</translation>
    </message>
    <message>
        <source>The finished output cannot be put in place as %1 (%2); choose another name.</source>
        <translation>Die fertige Ausgabe kann nicht als %1 abgelegt werden (%2); wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>%1 is a folder; choose a file name.</source>
        <translation>%1 ist ein Ordner; wählen Sie einen Dateinamen.</translation>
    </message>
    <message>
        <source>A picture of the sequence could not be written (%1); choose another folder.</source>
        <translation>Ein Bild der Sequenz konnte nicht geschrieben werden (%1); wählen Sie einen anderen Ordner.</translation>
    </message>
    <message>
        <source>The sound of %1 cannot be read (%2); choose another source or export without sound.</source>
        <translation>Der Ton von %1 kann nicht gelesen werden (%2); wählen Sie eine andere Quelle oder exportieren Sie ohne Ton.</translation>
    </message>
    <message>
        <source>The picture %1 is damaged; copy or export it again.</source>
        <translation>Das Bild %1 ist beschädigt; kopieren oder exportieren Sie es erneut.</translation>
    </message>
    <message>
        <source>%1 is not a video or picture that can be read, or it is damaged; choose another file or export it again.</source>
        <translation>%1 ist kein lesbares Video oder Bild oder ist beschädigt; wählen Sie eine andere Datei oder exportieren Sie sie erneut.</translation>
    </message>
    <message>
        <source>%1 has sound but no picture; choose a video or picture file.</source>
        <translation>%1 enthält Ton, aber kein Bild; wählen Sie eine Video- oder Bilddatei.</translation>
    </message>
    <message>
        <source>%1 breaks off before its end; copy or download it again.</source>
        <translation>%1 bricht vor dem Ende ab; kopieren oder laden Sie die Datei erneut.</translation>
    </message>
    <message>
        <source>The pictures cannot be written to %1; choose another folder.</source>
        <translation>Die Bilder können nicht in %1 geschrieben werden; wählen Sie einen anderen Ordner.</translation>
    </message>
</context>
<context>
    <name>zk::timeline::TimelineCanvas</name>
    <message>
        <source>Timeline</source>
        <translation>Timeline</translation>
    </message>
    <message>
        <source>Left and Right move the playhead, Page Up and Page Down go to segment nodes.</source>
        <translation>Links und Rechts bewegen den Abspielkopf, Bild auf und Bild ab springen zu Segmentknoten.</translation>
    </message>
    <message>
        <source>Segment node at %1</source>
        <translation>Segmentknoten bei %1</translation>
    </message>
    <message>
        <source>Least certain here: check this frame</source>
        <translation>Hier am unsichersten: Bild prüfen</translation>
    </message>
</context>
</TS>
