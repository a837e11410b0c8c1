<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>zoAssistant</name>
    <message>
        <source>&amp;New wall...</source>
        <translation>&amp;Neue Wand...</translation>
    </message>
    <message>
        <source>Tiled wall, power wall, cave, curved wall or free planes: sizes and names of nodes become a configuration.</source>
        <translation>Kachelwand, Powerwall, Cave, gebogene Wand oder freie Ebenen: Aus Maßen und Namen von Knoten wird eine Konfiguration.</translation>
    </message>
    <message>
        <source>&amp;Report...</source>
        <translation>&amp;Bericht...</translation>
    </message>
    <message>
        <source>What those who build the wall take along: walls with nodes and screens on each tile, cables, windows, networks. As PDF or on paper.</source>
        <translation>Was mitnimmt, wer die Wand aufbaut: Wände mit Knoten und Bildschirm auf jeder Kachel, Kabel, Fenster, Netze. Als PDF oder auf Papier.</translation>
    </message>
    <message>
        <source>&amp;Print report...</source>
        <translation>Bericht &amp;drucken...</translation>
    </message>
    <message>
        <source>The same on a printer.</source>
        <translation>Dasselbe auf einem Drucker.</translation>
    </message>
    <message>
        <source>Assistant: make a configuration of a new wall, and reports</source>
        <translation>Assistent: eine Konfiguration für eine neue Wand machen, und Berichte</translation>
    </message>
    <message>
        <source>Assistant</source>
        <translation>Assistent</translation>
    </message>
    <message>
        <source>New wall</source>
        <translation>Neue Wand</translation>
    </message>
    <message>
        <source>New wall: sizes and names of nodes become a configuration</source>
        <translation>Neue Wand: Aus Maßen und Namen von Knoten wird eine Konfiguration</translation>
    </message>
    <message>
        <source>&amp;Measured room...</source>
        <translation>&amp;Vermessener Raum...</translation>
    </message>
    <message>
        <source>What a tape measure or a total station gave becomes planes, with what remains of each measurement.</source>
        <translation>Was Maßband oder Tachymeter ergaben, wird zu Ebenen, mit dem Rest jeder Messung.</translation>
    </message>
</context>
<context>
    <name>zoAssistantCounts</name>
    <message>
        <source>1 node</source>
        <translation>1 Knoten</translation>
    </message>
    <message>
        <source>%1 nodes</source>
        <translation>%1 Knoten</translation>
    </message>
    <message>
        <source>1 of them a gateway</source>
        <translation>1 davon ein Gateway</translation>
    </message>
    <message>
        <source>%1 of them gateways</source>
        <translation>%1 davon Gateways</translation>
    </message>
    <message>
        <source>1 window</source>
        <translation>1 Fenster</translation>
    </message>
    <message>
        <source>%1 windows</source>
        <translation>%1 Fenster</translation>
    </message>
    <message>
        <source>no problems</source>
        <translation>keine Probleme</translation>
    </message>
    <message>
        <source>1 problem</source>
        <translation>1 Problem</translation>
    </message>
    <message>
        <source>%1 problems</source>
        <translation>%1 Probleme</translation>
    </message>
    <message>
        <source>1 page printed</source>
        <translation>1 Seite gedruckt</translation>
    </message>
    <message>
        <source>%1 pages printed</source>
        <translation>%1 Seiten gedruckt</translation>
    </message>
</context>
<context>
    <name>zoAssistantGapFields</name>
    <message>
        <source>Between tiles</source>
        <translation>Zwischen den Kacheln</translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation>Nichts</translation>
    </message>
    <message>
        <source>Overlap, blended</source>
        <translation>Überlappung, überblendet</translation>
    </message>
    <message>
        <source>Frames of monitors</source>
        <translation>Rahmen der Monitore</translation>
    </message>
    <message>
        <source>across</source>
        <translation>waagerecht</translation>
    </message>
    <message>
        <source>down</source>
        <translation>senkrecht</translation>
    </message>
    <message>
        <source>Between tiles %1, in pixels</source>
        <translation>Zwischen den Kacheln %1, in Pixeln</translation>
    </message>
    <message>
        <source>Between tiles %1, in millimetres</source>
        <translation>Zwischen den Kacheln %1, in Millimetern</translation>
    </message>
    <message>
        <source>Needs the size of a pixel</source>
        <translation>Dafür muss die Größe eines Pixels bekannt sein</translation>
    </message>
</context>
<context>
    <name>zoAssistantKindBox</name>
    <message>
        <source>Tiled wall</source>
        <translation>Kachelwand</translation>
    </message>
    <message>
        <source>Monitors or projectors side by side that show one picture</source>
        <translation>Monitore oder Projektoren nebeneinander, die ein Bild zeigen</translation>
    </message>
    <message>
        <source>Power wall</source>
        <translation>Powerwall</translation>
    </message>
    <message>
        <source>One flat wall of a size in millimetres, for viewers who are tracked</source>
        <translation>Eine ebene Wand mit Maßen in Millimetern, für Betrachter, deren Kopf verfolgt wird</translation>
    </message>
    <message>
        <source>Cave</source>
        <translation>Cave</translation>
    </message>
    <message>
        <source>Walls of a room around the viewer</source>
        <translation>Wände eines Raumes um den Betrachter</translation>
    </message>
    <message>
        <source>Curved wall</source>
        <translation>Gebogene Wand</translation>
    </message>
    <message>
        <source>Columns of monitors on an arc around the viewer</source>
        <translation>Spalten von Monitoren auf einem Bogen um den Betrachter</translation>
    </message>
    <message>
        <source>Free planes</source>
        <translation>Freie Ebenen</translation>
    </message>
    <message>
        <source>Screens that stand anywhere in the room</source>
        <translation>Bildflächen, die irgendwo im Raum stehen</translation>
    </message>
    <message>
        <source>Kind of wall</source>
        <translation>Art der Wand</translation>
    </message>
</context>
<context>
    <name>zoAssistantNodeFields</name>
    <message>
        <source>Nodes</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Names of the nodes in the order of the tiles, row by row from the upper left:
node1 node2, node1 - node6, node[1-6];
behind a gateway: gate { node[1-6] }</source>
        <translation>Namen der Knoten in der Reihenfolge der Kacheln, Zeile für Zeile von links oben:
node1 node2, node1 - node6, node[1-6];
hinter einem Gateway: gate { node[1-6] }</translation>
    </message>
    <message>
        <source>&amp;Names:</source>
        <translation>&amp;Namen:</translation>
    </message>
    <message>
        <source>W&amp;indows on each:</source>
        <translation>&amp;Fenster auf jedem:</translation>
    </message>
    <message>
        <source>Name of the wa&amp;ll:</source>
        <translation>Name der Wa&amp;nd:</translation>
    </message>
    <message>
        <source>At character %1: %2</source>
        <translation>Bei Zeichen %1: %2</translation>
    </message>
    <message>
        <source>For %1</source>
        <translation>Für %1</translation>
    </message>
    <message>
        <source>as many as it takes</source>
        <translation>so viele wie nötig</translation>
    </message>
    <message>
        <source>Windows on each node, each on a screen of its own. Where they do not spread evenly, the first nodes get one more</source>
        <translation>Fenster auf jedem Knoten, jedes auf einem eigenen Bildschirm. Wo sie sich nicht gleichmäßig verteilen, bekommen die ersten Knoten eines mehr</translation>
    </message>
</context>
<context>
    <name>zoAssistantNumberField</name>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
</context>
<context>
    <name>zoAssistantPageView</name>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
</context>
<context>
    <name>zoAssistantPanel</name>
    <message>
        <source>Assistant</source>
        <translation>Assistent</translation>
    </message>
    <message>
        <source>This host tells no module which configuration is open.</source>
        <translation>Dieses Programm sagt keinem Modul, welche Konfiguration offen ist.</translation>
    </message>
    <message>
        <source>No configuration is open.</source>
        <translation>Es ist keine Konfiguration offen.</translation>
    </message>
    <message>
        <source>%1: the configuration stays as it is.</source>
        <translation>%1: Die Konfiguration bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>Noch nicht gespeichert</translation>
    </message>
</context>
<context>
    <name>zoAssistantPlaneFields</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Numbered when it is empty</source>
        <translation>Nummeriert, wenn er leer ist</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Middle of the screen, mm to the right</source>
        <translation>Mitte der Bildfläche, mm nach rechts</translation>
    </message>
    <message>
        <source>Middle of the screen, mm upward</source>
        <translation>Mitte der Bildfläche, mm nach oben</translation>
    </message>
    <message>
        <source>Middle of the screen, mm toward the viewer&apos;s back</source>
        <translation>Mitte der Bildfläche, mm in den Rücken des Betrachters</translation>
    </message>
    <message>
        <source>Turned</source>
        <translation>Gedreht</translation>
    </message>
    <message>
        <source>Degrees: 0 faces the viewer, 90 stands at the left hand, -90 at the right hand</source>
        <translation>Grad: 0 steht dem Betrachter gegenüber, 90 zur linken Hand, -90 zur rechten Hand</translation>
    </message>
    <message>
        <source>Tilted</source>
        <translation>Gekippt</translation>
    </message>
    <message>
        <source>Degrees: 0 stands upright, 90 lies on the floor</source>
        <translation>Grad: 0 steht aufrecht, 90 liegt auf dem Boden</translation>
    </message>
    <message>
        <source>Screens (mm, degrees)</source>
        <translation>Bildflächen (mm, Grad)</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Screens</source>
        <translation>Bildflächen</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>Hin&amp;zufügen</translation>
    </message>
</context>
<context>
    <name>zoAssistantReportDialog</name>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>not saved</source>
        <translation>nicht gespeichert</translation>
    </message>
    <message>
        <source>%1, with changes that are not saved</source>
        <translation>%1, mit Änderungen, die nicht gespeichert sind</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>Of tiled walls, which have no size of their own</source>
        <translation>Von Kachelwänden, die keine eigenen Maße haben</translation>
    </message>
    <message>
        <source>Page before</source>
        <translation>Vorige Seite</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>&amp;Title:</source>
        <translation>&amp;Titel:</translation>
    </message>
    <message>
        <source>P&amp;aper:</source>
        <translation>P&amp;apier:</translation>
    </message>
    <message>
        <source>Si&amp;ze of a pixel:</source>
        <translation>&amp;Größe eines Pixels:</translation>
    </message>
    <message>
        <source>&amp;Save as PDF...</source>
        <translation>Als PDF &amp;speichern...</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <translation>&amp;Drucken...</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>Report (*.pdf)</source>
        <translation>Bericht (*.pdf)</translation>
    </message>
    <message>
        <source>%1 is the configuration</source>
        <translation>%1 ist die Konfiguration</translation>
    </message>
    <message>
        <source>Unable to save report %1: %2</source>
        <translation>Bericht %1 kann nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>%1 is saved</source>
        <translation>%1 ist gespeichert</translation>
    </message>
    <message>
        <source>Unable to print the report</source>
        <translation>Der Bericht kann nicht gedruckt werden</translation>
    </message>
    <message>
        <source>No page can be shown: %1.</source>
        <translation>Keine Seite kann gezeigt werden: %1.</translation>
    </message>
</context>
<context>
    <name>zoAssistantRoomView</name>
    <message>
        <source>Room</source>
        <translation>Raum</translation>
    </message>
    <message>
        <source>The walls in space around the viewer</source>
        <translation>Die Wände im Raum um den Betrachter</translation>
    </message>
</context>
<context>
    <name>zoAssistantSizeFields</name>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Hinten</translation>
    </message>
    <message>
        <source>Floor</source>
        <translation>Boden</translation>
    </message>
    <message>
        <source>Ceiling</source>
        <translation>Decke</translation>
    </message>
    <message>
        <source>Wall</source>
        <translation>Wand</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>&amp;Tiles:</source>
        <translation>&amp;Kacheln:</translation>
    </message>
    <message>
        <source>across,</source>
        <translation>nebeneinander,</translation>
    </message>
    <message>
        <source>down</source>
        <translation>untereinander</translation>
    </message>
    <message>
        <source>Pixels of one tile across and down</source>
        <translation>Pixel einer Kachel waagerecht und senkrecht</translation>
    </message>
    <message>
        <source>&amp;Pixels of a tile:</source>
        <translation>&amp;Pixel einer Kachel:</translation>
    </message>
    <message>
        <source>Width of a pixel. Needed for gaps in millimetres alone</source>
        <translation>Breite eines Pixels. Nur für Abstände in Millimetern nötig</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>Si&amp;ze of a pixel:</source>
        <translation>&amp;Größe eines Pixels:</translation>
    </message>
    <message>
        <source>Width of the picture, frames of monitors not counted</source>
        <translation>Breite des Bildes, ohne Rahmen von Monitoren</translation>
    </message>
    <message>
        <source>Height of the picture, frames of monitors not counted</source>
        <translation>Höhe des Bildes, ohne Rahmen von Monitoren</translation>
    </message>
    <message>
        <source>the whole wall</source>
        <translation>die ganze Wand</translation>
    </message>
    <message>
        <source>one tile</source>
        <translation>eine Kachel</translation>
    </message>
    <message>
        <source>What has this size</source>
        <translation>Was so groß ist</translation>
    </message>
    <message>
        <source>&amp;Size:</source>
        <translation>&amp;Maße:</translation>
    </message>
    <message>
        <source>x</source>
        <translation>x</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Depth</source>
        <translation>Tiefe</translation>
    </message>
    <message>
        <source>Walls:</source>
        <translation>Wände:</translation>
    </message>
    <message>
        <source>Radius of the circle through the corners of the tiles</source>
        <translation>Radius des Kreises durch die Ecken der Kacheln</translation>
    </message>
    <message>
        <source>Angle between neighbouring columns</source>
        <translation>Winkel zwischen benachbarten Spalten</translation>
    </message>
    <message>
        <source>&amp;Radius:</source>
        <translation>&amp;Radius:</translation>
    </message>
    <message>
        <source>or</source>
        <translation>oder</translation>
    </message>
    <message>
        <source>from column to column</source>
        <translation>von Spalte zu Spalte</translation>
    </message>
</context>
<context>
    <name>zoAssistantSurveyDialog</name>
    <message>
        <source>&amp;Wall or tile with its size</source>
        <translation>&amp;Wand oder Kachel mit ihrer Größe</translation>
    </message>
    <message>
        <source>Wall of &amp;several tiles</source>
        <translation>Wand aus &amp;mehreren Kacheln</translation>
    </message>
    <message>
        <source>&amp;Distance between two corners</source>
        <translation>&amp;Abstand zweier Ecken</translation>
    </message>
    <message>
        <source>Height above the &amp;floor</source>
        <translation>Höhe über dem &amp;Boden</translation>
    </message>
    <message>
        <source>&amp;Angle between two walls</source>
        <translation>W&amp;inkel zwischen zwei Wänden</translation>
    </message>
    <message>
        <source>&amp;Edges that touch</source>
        <translation>&amp;Kanten, die sich berühren</translation>
    </message>
    <message>
        <source>&amp;Plumb walls</source>
        <translation>&amp;Lotrechte Wände</translation>
    </message>
    <message>
        <source>A wall that &amp;lies flat</source>
        <translation>Eine Wand, die &amp;flach liegt</translation>
    </message>
    <message>
        <source>Where the &amp;viewer stands</source>
        <translation>W&amp;o der Betrachter steht</translation>
    </message>
    <message>
        <source>P&amp;oint list of a total station</source>
        <translation>&amp;Punktliste eines Tachymeters</translation>
    </message>
    <message>
        <source>Which &amp;corner a point of it is</source>
        <translation>Welche &amp;Ecke ein Punkt davon ist</translation>
    </message>
    <message>
        <source>Measured room</source>
        <translation>Vermessener Raum</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Load...</source>
        <translation>&amp;Laden...</translation>
    </message>
    <message>
        <source>&amp;Save...</source>
        <translation>&amp;Speichern...</translation>
    </message>
    <message>
        <source>Load Measurements</source>
        <translation>Messungen laden</translation>
    </message>
    <message>
        <source>Measurements (*.txt)</source>
        <translation>Messungen (*.txt)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Save Measurements</source>
        <translation>Messungen speichern</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>it has more than 1 MiB</source>
        <translation>sie hat mehr als 1 MiB</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>%1, line %2: %3</source>
        <translation>%1, Zeile %2: %3</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>%1: measured %2, fits %3</source>
        <translation>%1: gemessen %2, passt %3</translation>
    </message>
    <message>
        <source>Nothing was measured twice: a mistake in any line would not be seen.</source>
        <translation>Nichts wurde doppelt gemessen: Ein Fehler in einer Zeile fiele nicht auf.</translation>
    </message>
    <message>
        <source>All measurements agree.</source>
        <translation>Alle Messungen stimmen überein.</translation>
    </message>
    <message>
        <source>Fits worst, and well enough: %1, off by %2 mm.</source>
        <translation>Passt am schlechtesten, aber gut genug: %1, Abweichung %2 mm.</translation>
    </message>
    <message>
        <source>%1 degrees</source>
        <translation>%1 Grad</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
    <message>
        <source>Most likely a mistake: %1, about %2 too large.</source>
        <translation>Höchstwahrscheinlich ein Fehler: %1, etwa %2 zu groß.</translation>
    </message>
    <message>
        <source>Most likely a mistake: %1, about %2 too small.</source>
        <translation>Höchstwahrscheinlich ein Fehler: %1, etwa %2 zu klein.</translation>
    </message>
    <message>
        <source>Or %1, which would look the same.</source>
        <translation>Oder %1, was genauso aussähe.</translation>
    </message>
    <message>
        <source>This host lets no module change the configuration.</source>
        <translation>Diese Anwendung lässt kein Modul die Konfiguration ändern.</translation>
    </message>
    <message>
        <source>The planes take the place of those of the same names; windows go on showing them. Undo brings the present ones back.</source>
        <translation>Die Ebenen ersetzen die gleichnamigen; Fenster zeigen sie weiterhin. „Rückgängig“ bringt die jetzigen zurück.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is held weakly: measure across it, from a place in front of it.</source>
        <translation>„%1“ ist nur schwach bestimmt: Messen Sie auch von einer Stelle davor.</translation>
    </message>
</context>
<context>
    <name>zoAssistantSurveyTable</name>
    <message>
        <source>Measurement</source>
        <translation>Messung</translation>
    </message>
    <message>
        <source>Residual</source>
        <translation>Rest</translation>
    </message>
    <message>
        <source>Checked</source>
        <translation>Geprüft</translation>
    </message>
    <message>
        <source>What was measured too much, in millimetres</source>
        <translation>Was zu viel gemessen wurde, in Millimetern</translation>
    </message>
    <message>
        <source>How much the other measurements say of it; with 0 % a mistake in it would not be seen</source>
        <translation>Wie viel die anderen Messungen über sie sagen; bei 0 % fiele ein Fehler in ihr nicht auf</translation>
    </message>
    <message>
        <source>Measurements</source>
        <translation>Messungen</translation>
    </message>
</context>
<context>
    <name>zoAssistantViewerFields</name>
    <message>
        <source>left and right by turns</source>
        <translation>links und rechts abwechselnd</translation>
    </message>
    <message>
        <source>both eyes on one node</source>
        <translation>beide Augen auf einem Knoten</translation>
    </message>
    <message>
        <source>a node for each eye</source>
        <translation>ein Knoten für jedes Auge</translation>
    </message>
    <message>
        <source>all left ones, then all right ones</source>
        <translation>erst alle linken, dann alle rechten</translation>
    </message>
    <message>
        <source>Viewer</source>
        <translation>Betrachter</translation>
    </message>
    <message>
        <source>From the wall to the viewer</source>
        <translation>Von der Wand zum Betrachter</translation>
    </message>
    <message>
        <source>&amp;Distance:</source>
        <translation>A&amp;bstand:</translation>
    </message>
    <message>
        <source>Stand &amp;here</source>
        <translation>&amp;Hier stehen</translation>
    </message>
    <message>
        <source>between the eyes</source>
        <translation>zwischen den Augen</translation>
    </message>
    <message>
        <source>&amp;Windows:</source>
        <translation>&amp;Fenster:</translation>
    </message>
    <message>
        <source>Distance between the eyes</source>
        <translation>Abstand der Augen</translation>
    </message>
    <message>
        <source>Which windows follow each other on the nodes</source>
        <translation>Welche Fenster auf den Knoten aufeinander folgen</translation>
    </message>
    <message>
        <source>Ster&amp;eo:</source>
        <translation>Ster&amp;eo:</translation>
    </message>
    <message>
        <source>How far the viewer stands to the right of the middle; below 0 to the left</source>
        <translation>Wie weit der Betrachter rechts der Mitte steht; unter 0 links davon</translation>
    </message>
    <message>
        <source>How far the eyes are above the middle; below 0 under it</source>
        <translation>Wie weit die Augen über der Mitte sind; unter 0 darunter</translation>
    </message>
    <message>
        <source>above it:</source>
        <translation>darüber:</translation>
    </message>
    <message>
        <source>Press it, then click in the picture at the right: the viewer stands at that place</source>
        <translation>Drücken Sie darauf, dann klicken Sie rechts in das Bild: Der Betrachter steht an dieser Stelle</translation>
    </message>
    <message>
        <source>Behind the mi&amp;ddle:</source>
        <translation>Hinter der M&amp;itte:</translation>
    </message>
    <message>
        <source>right of it:</source>
        <translation>rechts davon:</translation>
    </message>
    <message>
        <source>right of the middle:</source>
        <translation>rechts der Mitte:</translation>
    </message>
    <message>
        <source>How far the viewer stands behind the middle; below 0 before it</source>
        <translation>Wie weit der Betrachter hinter der Mitte steht; unter 0 davor</translation>
    </message>
</context>
<context>
    <name>zoAssistantWallDialog</name>
    <message>
        <source>New wall</source>
        <translation>Neue Wand</translation>
    </message>
    <message>
        <source>This host lets no module change the configuration.</source>
        <translation>Dieses Programm lässt kein Modul die Konfiguration ändern.</translation>
    </message>
    <message>
        <source>%1.</source>
        <translation>%1.</translation>
    </message>
    <message>
        <source>Nodes: their names are missing, such as %1.</source>
        <translation>Knoten: Ihre Namen fehlen noch, etwa %1.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>The configuration will have no problems. Undo brings the present one back.</source>
        <translation>Die Konfiguration wird keine Probleme haben. Rückgängig bringt die jetzige zurück.</translation>
    </message>
    <message>
        <source>%1 pixels</source>
        <translation>%1 Pixel</translation>
    </message>
    <message>
        <source>wall %1 mm</source>
        <translation>Wand %1 mm</translation>
    </message>
    <message>
        <source>tile %1 mm</source>
        <translation>Kachel %1 mm</translation>
    </message>
    <message>
        <source>a pixel %1 mm</source>
        <translation>ein Pixel %1 mm</translation>
    </message>
    <message>
        <source>Tiles</source>
        <translation>Kacheln</translation>
    </message>
    <message>
        <source>Pixels of a tile</source>
        <translation>Pixel einer Kachel</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Maße</translation>
    </message>
    <message>
        <source>Size of a pixel</source>
        <translation>Größe eines Pixels</translation>
    </message>
    <message>
        <source>Between tiles</source>
        <translation>Zwischen den Kacheln</translation>
    </message>
    <message>
        <source>Viewer</source>
        <translation>Betrachter</translation>
    </message>
    <message>
        <source>Radius</source>
        <translation>Radius</translation>
    </message>
    <message>
        <source>Walls</source>
        <translation>Wände</translation>
    </message>
    <message>
        <source>Screens</source>
        <translation>Bildflächen</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>Stereo</translation>
    </message>
    <message>
        <source>Distance between the eyes</source>
        <translation>Abstand der Augen</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Nodes</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Windows on each node</source>
        <translation>Fenster auf jedem Knoten</translation>
    </message>
    <message>
        <source>Name of the wall</source>
        <translation>Name der Wand</translation>
    </message>
    <message>
        <source>Click in the picture where the viewer stands.</source>
        <translation>Klicken Sie in das Bild, wo der Betrachter steht.</translation>
    </message>
</context>
</TS>
