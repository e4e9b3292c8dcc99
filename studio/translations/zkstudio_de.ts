<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
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
        <source>Current color</source>
        <translation>Aktuelle Farbe</translation>
    </message>
    <message>
        <source>Choose a color</source>
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
    <name>presets</name>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Licht</translation>
    </message>
    <message>
        <source>Shadow</source>
        <translation>Schatten</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>Stil</translation>
    </message>
    <message>
        <source>Aura</source>
        <translation>Aura</translation>
    </message>
    <message>
        <source>Chalk Doodle</source>
        <translation>Kreidezeichnung</translation>
    </message>
    <message>
        <source>Colour Pop</source>
        <translation>Farbakzent</translation>
    </message>
    <message>
        <source>Comic</source>
        <translation>Comic</translation>
    </message>
    <message>
        <source>Dashed Border</source>
        <translation>Gestrichelter Rand</translation>
    </message>
    <message>
        <source>Double Border</source>
        <translation>Doppelter Rand</translation>
    </message>
    <message>
        <source>Drop Shadow</source>
        <translation>Schlagschatten</translation>
    </message>
    <message>
        <source>Duotone</source>
        <translation>Duplex</translation>
    </message>
    <message>
        <source>Ghost Trail</source>
        <translation>Nachbild</translation>
    </message>
    <message>
        <source>Glitch</source>
        <translation>Glitch</translation>
    </message>
    <message>
        <source>Glow</source>
        <translation>Leuchten</translation>
    </message>
    <message>
        <source>Gradient Border</source>
        <translation>Rand mit Verlauf</translation>
    </message>
    <message>
        <source>Neon</source>
        <translation>Neon</translation>
    </message>
    <message>
        <source>Neon Pulse</source>
        <translation>Pulsierendes Neon</translation>
    </message>
    <message>
        <source>Retro Offset</source>
        <translation>Retro-Versatz</translation>
    </message>
    <message>
        <source>Shockwave</source>
        <translation>Schockwelle</translation>
    </message>
    <message>
        <source>Sketch Border</source>
        <translation>Skizzierter Rand</translation>
    </message>
    <message>
        <source>Solid Border</source>
        <translation>Einfarbiger Rand</translation>
    </message>
    <message>
        <source>Spotlight</source>
        <translation>Spotlicht</translation>
    </message>
    <message>
        <source>Sticker</source>
        <translation>Aufkleber</translation>
    </message>
    <message>
        <source>Sunset Border</source>
        <translation>Sonnenuntergangsrand</translation>
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
        <translation>Systemsprache</translation>
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
        <translation>Liste leeren</translation>
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
        <source>The mattes cannot be written to %1; choose another folder.</source>
        <translation>Die Masken können nicht in %1 geschrieben werden; wählen Sie einen anderen Ordner.</translation>
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
</context>
</TS>
