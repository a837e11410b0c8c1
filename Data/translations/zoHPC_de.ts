<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>zoExportNotes</name>
    <message>
        <source>display %1</source>
        <translation>Anzeige %1</translation>
    </message>
    <message>
        <source>the eye separation of %1 mm of %2 is not written: there is one for all, %3 mm</source>
        <translation>der Augenabstand von %1 mm von %2 wird nicht geschrieben: es gibt einen für alle, %3 mm</translation>
    </message>
    <message>
        <source>the hardware sync of %1 is not written</source>
        <translation>die Hardware-Synchronisation von %1 wird nicht geschrieben</translation>
    </message>
    <message>
        <source>the camera &quot;%1&quot; of %2 is not written</source>
        <translation>die Kamera „%1“ von %2 wird nicht geschrieben</translation>
    </message>
    <message>
        <source>full screen (%1 windows) is not written: they open in their size at their place</source>
        <translation>Vollbild (%1 Fenster) wird nicht geschrieben: sie öffnen sich in ihrer Größe an ihrem Platz</translation>
    </message>
    <message>
        <source>the host name &quot;%1&quot; is written as &quot;%2&quot;</source>
        <translation>der Rechnername „%1“ wird als „%2“ geschrieben</translation>
    </message>
    <message>
        <source>the gateway &quot;%1&quot; is not written: the hosts behind it must be reached directly</source>
        <translation>das Gateway „%1“ wird nicht geschrieben: die Rechner dahinter müssen direkt erreichbar sein</translation>
    </message>
    <message>
        <source>the edge blending of &quot;%1&quot; is not written</source>
        <translation>die Randüberblendung von „%1“ wird nicht geschrieben</translation>
    </message>
    <message>
        <source>the right-eye offset of &quot;%1&quot; is not written</source>
        <translation>der Versatz des rechten Auges von „%1“ wird nicht geschrieben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has pixels instead of a size: a pixel is taken for %2 mm (--pixel-pitch)</source>
        <translation>„%1“ hat Pixel statt einer Größe: ein Pixel gilt als %2 mm (--pixel-pitch)</translation>
    </message>
    <message>
        <source>the eye &quot;%1&quot; of %2 is not written</source>
        <translation>das Auge „%1“ von %2 wird nicht geschrieben</translation>
    </message>
    <message>
        <source>the flip of %1 is not written</source>
        <translation>die Spiegelung von %1 wird nicht geschrieben</translation>
    </message>
    <message>
        <source>for ParaView: %1</source>
        <translation>für ParaView: %1</translation>
    </message>
    <message>
        <source>for Equalizer: %1</source>
        <translation>für Equalizer: %1</translation>
    </message>
</context>
<context>
    <name>zoHPC</name>
    <message>
        <source>Cluster</source>
        <translation>Cluster</translation>
    </message>
    <message>
        <source>&amp;Toggle Connection to the Cluster</source>
        <translation>Verbindung zum Cluster &amp;umschalten</translation>
    </message>
    <message>
        <source>Toggle Connection to the Cluster</source>
        <translation>Verbindung zum Cluster umschalten</translation>
    </message>
    <message>
        <source>Send: %1 MByte/s
Receive: %2 MByte/s
Sync: %3 frames/s
</source>
        <translation>Senden: %1 MByte/s
Empfangen: %2 MByte/s
Synchronisation: %3 Bilder/s
</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>There is already a ZOKEClusterServer running
on one or more of the requested cluster nodes.
Do you really want to start clustering and risk
performance problems?</source>
        <translation>Auf mindestens einem der gewünschten Clusterknoten
läuft bereits ein ZOKEClusterServer.
Soll der Cluster trotzdem gestartet werden,
auch wenn er dann langsamer sein kann?</translation>
    </message>
    <message>
        <source>There is already a ZOKEClusterServer running
on one or more of the requested cluster nodes
and there is likely not enough free memory.
Do you really want to start clustering and risk
server instability?</source>
        <translation>Auf mindestens einem der gewünschten Clusterknoten
läuft bereits ein ZOKEClusterServer,
und wahrscheinlich reicht der freie Speicher nicht aus.
Soll der Cluster trotzdem gestartet werden,
auch wenn die Server dann instabil sein können?</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Network (%1)</source>
        <translation>Netzwerk (%1)</translation>
    </message>
    <message>
        <source>Cluster start given up after %1 attempts.</source>
        <translation>Start des Clusters nach %1 Versuchen aufgegeben.</translation>
    </message>
</context>
<context>
    <name>zoHPCBracketText</name>
    <message>
        <source>&quot;[&quot; is not closed</source>
        <translation>„[“ ist nicht geschlossen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no range of numbers</source>
        <translation>„%1“ ist kein Zahlenbereich</translation>
    </message>
    <message>
        <source>&quot;%1&quot; runs backwards</source>
        <translation>„%1“ läuft rückwärts</translation>
    </message>
    <message>
        <source>more than %1 names</source>
        <translation>mehr als %1 Namen</translation>
    </message>
    <message>
        <source>names of more than %1 characters altogether</source>
        <translation>Namen mit zusammen mehr als %1 Zeichen</translation>
    </message>
</context>
<context>
    <name>zoHPCButtonKeys</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>An&amp;wenden</translation>
    </message>
</context>
<context>
    <name>zoHPCComboSearch</name>
    <message>
        <source>Search: %1</source>
        <translation>Suche: %1</translation>
    </message>
</context>
<context>
    <name>zoHPCConfigConverter</name>
    <message>
        <source>%1 fields of the window layout are missing or no numbers; they were read as 0.</source>
        <translation>Fehlende oder nicht numerische Angaben zu den Fenstern, die als 0 gelesen wurden: %1.</translation>
    </message>
    <message>
        <source>The text holds no legacy parameter.</source>
        <translation>Der Text enthält keinen Parameter einer alten Konfiguration.</translation>
    </message>
    <message>
        <source>The compression level &quot;%1&quot; is not known.</source>
        <translation>Die Kompressionsstufe „%1“ ist unbekannt.</translation>
    </message>
    <message>
        <source>Host &quot;%1&quot;: what follows its second list of forwarded hosts was dropped.</source>
        <translation>Rechner „%1“: Was auf seine zweite Liste weitergeleiteter Rechner folgt, entfällt.</translation>
    </message>
    <message>
        <source>Several hosts have the name &quot;%1&quot;, so all windows name their nodes &quot;%1 1&quot;, &quot;%1 2&quot; and so on.</source>
        <translation>Mehrere Rechner heißen „%1“; alle Fenster nennen ihre Knoten deshalb „%1 1“, „%1 2“ und so weiter.</translation>
    </message>
    <message>
        <source>The overlap %1 was taken for both directions.</source>
        <translation>Die Überlappung %1 gilt für beide Richtungen.</translation>
    </message>
    <message>
        <source>The viewports cover the left half of their windows only.</source>
        <translation>Die Viewports bedecken nur die linke Hälfte ihrer Fenster.</translation>
    </message>
    <message>
        <source>The wall has %1 x %2 tiles; only its first %3 windows were converted.</source>
        <translation>Die Wand hat %1 x %2 Kacheln; nur ihre ersten %3 Fenster wurden übernommen.</translation>
    </message>
    <message>
        <source>There is no zoClusterPipe%1, so %2 pipes with higher numbers were dropped.</source>
        <translation>zoClusterPipe%1 fehlt; Pipes mit höheren Nummern entfallen: %2.</translation>
    </message>
    <message>
        <source>%1 windows have no width or no height.</source>
        <translation>Fenster ohne Breite oder Höhe: %1.</translation>
    </message>
    <message>
        <source>%1 is &quot;%2&quot;, which is no number; it was read as 0.</source>
        <translation>%1 ist „%2“ und keine Zahl; der Wert wurde als 0 gelesen.</translation>
    </message>
    <message>
        <source>Forwarding hosts take part in the order in which windows get their nodes and positions; check both.</source>
        <translation>Weiterleitende Rechner zählen mit, wenn Fenster ihre Knoten und Positionen erhalten; beides ist zu prüfen.</translation>
    </message>
    <message>
        <source>%1 windows have no node.</source>
        <translation>Fenster ohne Knoten: %1.</translation>
    </message>
    <message>
        <source>%1 hosts have no window.</source>
        <translation>Rechner ohne Fenster: %1.</translation>
    </message>
    <message>
        <source>Legacy parameters inside more than %1 others were ignored.</source>
        <translation>Parameter der alten Konfiguration, die in mehr als %1 anderen stehen, wurden übergangen.</translation>
    </message>
    <message>
        <source>Legacy wall of %1 x %2 tiles: only the first %3 windows were converted.</source>
        <translation>Alte Wand mit %1 x %2 Kacheln: nur die ersten %3 Fenster wurden übernommen.</translation>
    </message>
    <message>
        <source>The offset %1 of the wall has no counterpart; check where its windows stand.</source>
        <translation>Der Versatz %1 der Wand hat keine Entsprechung; bitte prüfen, wo ihre Fenster stehen.</translation>
    </message>
</context>
<context>
    <name>zoHPCConfigEditGUIW</name>
    <message>
        <source>Edit cluster computers</source>
        <translation>Clusterrechner bearbeiten</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Read configuration from file</source>
        <translation>Konfiguration aus Datei lesen</translation>
    </message>
    <message>
        <source>When a file is named here, its content takes the place of the text above</source>
        <translation>Ist hier eine Datei angegeben, tritt ihr Inhalt an die Stelle des Textes darüber</translation>
    </message>
    <message>
        <source>Choose the file</source>
        <translation>Datei auswählen</translation>
    </message>
    <message>
        <source>List of compute nodes</source>
        <translation>Liste der Rechenknoten</translation>
    </message>
    <message>
        <source>There is no file %1</source>
        <translation>Es gibt keine Datei %1</translation>
    </message>
    <message>
        <source>Unable to read %1: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>%1 is no text in UTF-8</source>
        <translation>%1 ist kein Text in UTF-8</translation>
    </message>
    <message>
        <source>The file takes the place of the text: %1</source>
        <translation>Die Datei tritt an die Stelle des Textes: %1</translation>
    </message>
    <message>
        <source>Choose another file, or empty the field to use the text.</source>
        <translation>Wählen Sie eine andere Datei, oder leeren Sie das Feld, damit der Text gilt.</translation>
    </message>
    <message>
        <source>Line %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>Write it so</source>
        <translation>So schreiben</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
</context>
<context>
    <name>zoHPCConnectGUIW</name>
    <message>
        <source>Cluster</source>
        <translation>Cluster</translation>
    </message>
    <message>
        <source>Connecting to cluster servers ...</source>
        <translation>Verbinden mit den Clusterservern ...</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>zoHPCDisplayGUII</name>
    <message>
        <source>Display Setup</source>
        <translation>Anzeigen einrichten</translation>
    </message>
    <message>
        <source>Surfaces of the display system, with the tiles or planes that follow from them</source>
        <translation>Projektionsflächen des Anzeigesystems mit den Kacheln oder Ebenen, die sich aus ihnen ergeben</translation>
    </message>
    <message>
        <source>Projections</source>
        <translation>Projektionen</translation>
    </message>
    <message>
        <source>Adds a tiled wall; its type can be changed</source>
        <translation>Fügt eine Kachelwand hinzu; ihr Typ lässt sich ändern</translation>
    </message>
    <message>
        <source>Add Projection</source>
        <translation>Projektion hinzufügen</translation>
    </message>
    <message>
        <source>What the render nodes show; orange rows still lack a render node or a projection</source>
        <translation>Was die Renderknoten zeigen; orangefarbenen Zeilen fehlt noch ein Renderknoten oder eine Projektion</translation>
    </message>
    <message>
        <source>Windows and Viewports</source>
        <translation>Fenster und Viewports</translation>
    </message>
    <message>
        <source>Adds a group of windows that share camera and user</source>
        <translation>Fügt eine Gruppe von Fenstern mit gemeinsamer Kamera und gemeinsamem Benutzer hinzu</translation>
    </message>
    <message>
        <source>Add Display</source>
        <translation>Anzeige hinzufügen</translation>
    </message>
    <message>
        <source>Adds a window with one viewport to the current display</source>
        <translation>Fügt der aktuellen Anzeige ein Fenster mit einem Viewport hinzu</translation>
    </message>
    <message>
        <source>Add Window</source>
        <translation>Fenster hinzufügen</translation>
    </message>
    <message>
        <source>Adds a viewport to the current window</source>
        <translation>Fügt dem aktuellen Fenster einen Viewport hinzu</translation>
    </message>
    <message>
        <source>Add Viewport</source>
        <translation>Viewport hinzufügen</translation>
    </message>
    <message>
        <source>Choose a projection, display, window or viewport to see and change its properties.</source>
        <translation>Wählen Sie eine Projektion, eine Anzeige, ein Fenster oder einen Viewport aus, um die Eigenschaften zu sehen und zu ändern.</translation>
    </message>
    <message>
        <source>Laid out by its projection: edit that one, or convert it to planes to edit each plane on its own.</source>
        <translation>Ergibt sich aus der übergeordneten Projektion: Bearbeiten Sie diese, oder wandeln Sie sie in Ebenen um, um jede Ebene für sich zu bearbeiten.</translation>
    </message>
    <message>
        <source>Projection</source>
        <translation>Projektion</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Name that viewports refer to; renaming carries over to them</source>
        <translation>Name, auf den sich Viewports beziehen; sie übernehmen einen neuen Namen</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>What the surface is made of; decides which parameters it has</source>
        <translation>Art der Projektionsfläche; bestimmt, welche Parameter sie hat</translation>
    </message>
    <message>
        <source>Tile Layout</source>
        <translation>Kachelanordnung</translation>
    </message>
    <message>
        <source>Row</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Row of this tile, from the top</source>
        <translation>Zeile dieser Kachel, von oben gezählt</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Column of this tile, from the left</source>
        <translation>Spalte dieser Kachel, von links gezählt</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Tiles on top of each other; each is one picture</source>
        <translation>Anzahl der Kacheln übereinander; jede ist ein Bild</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Tiles side by side; each is one picture</source>
        <translation>Anzahl der Kacheln nebeneinander; jede ist ein Bild</translation>
    </message>
    <message>
        <source>Tile overlap</source>
        <translation>Kachelüberlappung</translation>
    </message>
    <message>
        <source>How far neighbouring tiles show the same strip of the picture, side by side</source>
        <translation>Wie breit der Bildstreifen ist, den nebeneinanderliegende Kacheln beide zeigen</translation>
    </message>
    <message>
        <source>×</source>
        <translation>×</translation>
    </message>
    <message>
        <source>How far neighbouring tiles show the same strip of the picture, one above the other</source>
        <translation>Wie hoch der Bildstreifen ist, den übereinanderliegende Kacheln beide zeigen</translation>
    </message>
    <message>
        <source>[mm]</source>
        <translation>[mm]</translation>
    </message>
    <message>
        <source>Projection area [mm]</source>
        <translation>Projektionsfläche [mm]</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Width of the whole wall; the picture gets wider with it</source>
        <translation>Breite der ganzen Wand; mit ihr wird das Bild breiter</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Height of the whole wall</source>
        <translation>Höhe der ganzen Wand</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Z</source>
        <translation>Z</translation>
    </message>
    <message>
        <source>Lower left</source>
        <translation>Unten links</translation>
    </message>
    <message>
        <source>Lower left corner of the plane, x: to the right of the viewer</source>
        <translation>Untere linke Ecke der Ebene, x: nach rechts vom Betrachter aus</translation>
    </message>
    <message>
        <source>Lower left corner of the plane, y: above the viewer</source>
        <translation>Untere linke Ecke der Ebene, y: über dem Betrachter</translation>
    </message>
    <message>
        <source>Lower left corner of the plane, z: behind the viewer; surfaces in front have negative values</source>
        <translation>Untere linke Ecke der Ebene, z: hinter dem Betrachter; Flächen vor ihm haben negative Werte</translation>
    </message>
    <message>
        <source>Lower right</source>
        <translation>Unten rechts</translation>
    </message>
    <message>
        <source>Lower right corner of the plane, x: to the right of the viewer</source>
        <translation>Untere rechte Ecke der Ebene, x: nach rechts vom Betrachter aus</translation>
    </message>
    <message>
        <source>Lower right corner of the plane, y: above the viewer</source>
        <translation>Untere rechte Ecke der Ebene, y: über dem Betrachter</translation>
    </message>
    <message>
        <source>Lower right corner of the plane, z: behind the viewer; surfaces in front have negative values</source>
        <translation>Untere rechte Ecke der Ebene, z: hinter dem Betrachter; Flächen vor ihm haben negative Werte</translation>
    </message>
    <message>
        <source>Upper right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Upper right corner of the plane, x: to the right of the viewer</source>
        <translation>Obere rechte Ecke der Ebene, x: nach rechts vom Betrachter aus</translation>
    </message>
    <message>
        <source>Upper right corner of the plane, y: above the viewer</source>
        <translation>Obere rechte Ecke der Ebene, y: über dem Betrachter</translation>
    </message>
    <message>
        <source>Upper right corner of the plane, z: behind the viewer; surfaces in front have negative values</source>
        <translation>Obere rechte Ecke der Ebene, z: hinter dem Betrachter; Flächen vor ihm haben negative Werte</translation>
    </message>
    <message>
        <source>Cave walls</source>
        <translation>Wände der Cave</translation>
    </message>
    <message>
        <source>The cave has a wall at the left</source>
        <translation>Die Cave hat links eine Wand</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>The cave has a ceiling</source>
        <translation>Die Cave hat eine Decke</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>The cave has a wall in front of the viewer</source>
        <translation>Die Cave hat eine Wand vor dem Betrachter</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>The cave has a wall at the right</source>
        <translation>Die Cave hat rechts eine Wand</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>The cave has a floor</source>
        <translation>Die Cave hat einen Boden</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Unten</translation>
    </message>
    <message>
        <source>The cave has a wall behind the viewer</source>
        <translation>Die Cave hat eine Wand hinter dem Betrachter</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Hinten</translation>
    </message>
    <message>
        <source>Cave size [mm]</source>
        <translation>Größe der Cave [mm]</translation>
    </message>
    <message>
        <source>From the left to the right wall</source>
        <translation>Von der linken zur rechten Wand</translation>
    </message>
    <message>
        <source>From the floor to the ceiling</source>
        <translation>Vom Boden zur Decke</translation>
    </message>
    <message>
        <source>Depth</source>
        <translation>Tiefe</translation>
    </message>
    <message>
        <source>From the front to the back wall</source>
        <translation>Von der vorderen zur hinteren Wand</translation>
    </message>
    <message>
        <source>Cave center [mm]</source>
        <translation>Mitte der Cave [mm]</translation>
    </message>
    <message>
        <source>Middle of the box, to the right of the viewer</source>
        <translation>Mitte des Quaders, nach rechts vom Betrachter aus</translation>
    </message>
    <message>
        <source>Middle of the box, above the viewer</source>
        <translation>Mitte des Quaders, über dem Betrachter</translation>
    </message>
    <message>
        <source>Middle of the box, behind the viewer</source>
        <translation>Mitte des Quaders, hinter dem Betrachter</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Sicht</translation>
    </message>
    <message>
        <source>Distance [mm]</source>
        <translation>Abstand [mm]</translation>
    </message>
    <message>
        <source>How far in front of the viewer the surface stands; nearer makes the picture wider</source>
        <translation>Wie weit die Fläche vor dem Betrachter steht; näher heran wird der Blickwinkel größer</translation>
    </message>
    <message>
        <source>Right eye offset [pixel]</source>
        <translation>Versatz rechtes Auge [Pixel]</translation>
    </message>
    <message>
        <source>Moves the right eye&apos;s picture to the right</source>
        <translation>Verschiebt das Bild des rechten Auges nach rechts</translation>
    </message>
    <message>
        <source>Moves the right eye&apos;s picture up</source>
        <translation>Verschiebt das Bild des rechten Auges nach oben</translation>
    </message>
    <message>
        <source>Dims overlapping edges so that the tiles melt into one picture</source>
        <translation>Blendet überlappende Ränder ab, sodass die Kacheln zu einem Bild verschmelzen</translation>
    </message>
    <message>
        <source>Edge Blending</source>
        <translation>Randüberblendung</translation>
    </message>
    <message>
        <source>Edges</source>
        <translation>Ränder</translation>
    </message>
    <message>
        <source>Part of the tile width that fades out at the left</source>
        <translation>Blendbereich am linken Rand, als Anteil der Kachelbreite</translation>
    </message>
    <message>
        <source>Part of the tile width that fades out at the right</source>
        <translation>Blendbereich am rechten Rand, als Anteil der Kachelbreite</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>Eye separation [mm]</source>
        <translation>Augenabstand [mm]</translation>
    </message>
    <message>
        <source>Distance between the two eyes; a larger one deepens the picture, zero flattens it</source>
        <translation>Abstand der beiden Augen; ein größerer gibt dem Bild mehr Tiefe, null macht es flach</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Camera of the scene that this display shows; empty follows the active one</source>
        <translation>Kamera der Szene, die diese Anzeige zeigt; leer folgt der aktiven Kamera</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>Number of the tracked user for whom the picture is right</source>
        <translation>Nummer des verfolgten Benutzers, für den das Bild stimmt</translation>
    </message>
    <message>
        <source>All pictures of this display change at the same moment, kept in step by the graphics boards</source>
        <translation>Alle Bilder dieser Anzeige wechseln im selben Moment; die Grafikkarten halten sie im Takt</translation>
    </message>
    <message>
        <source>Hardware sync</source>
        <translation>Hardware-Synchronisation</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Render node</source>
        <translation>Renderknoten</translation>
    </message>
    <message>
        <source>Compute node that draws this window</source>
        <translation>Rechenknoten, der dieses Fenster zeichnet</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Screen of that node on which the window opens</source>
        <translation>Bildschirm dieses Knotens, auf dem sich das Fenster öffnet</translation>
    </message>
    <message>
        <source>The window covers its whole screen</source>
        <translation>Das Fenster füllt seinen ganzen Bildschirm</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Geometry [pixel]</source>
        <translation>Geometrie [Pixel]</translation>
    </message>
    <message>
        <source>Left edge of the window on its screen</source>
        <translation>Linker Rand des Fensters auf seinem Bildschirm</translation>
    </message>
    <message>
        <source>Top edge of the window on its screen</source>
        <translation>Oberer Rand des Fensters auf seinem Bildschirm</translation>
    </message>
    <message>
        <source>Width of the picture</source>
        <translation>Breite des Bildes</translation>
    </message>
    <message>
        <source>Height of the picture</source>
        <translation>Höhe des Bildes</translation>
    </message>
    <message>
        <source>Click the surface that this viewport shows</source>
        <translation>Klicken Sie auf die Projektionsfläche, die dieser Viewport zeigt</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Part of the window that the viewport fills</source>
        <translation>Teil des Fensters, den der Viewport füllt</translation>
    </message>
    <message>
        <source>Lower left (fraction)</source>
        <translation>Unten links (Anteil)</translation>
    </message>
    <message>
        <source>Left edge of the viewport; 0 is the left edge of the window, 1 the right one</source>
        <translation>Linker Rand des Viewports; 0 ist der linke Rand des Fensters, 1 der rechte</translation>
    </message>
    <message>
        <source>Lower edge of the viewport; 0 is the lower edge of the window, 1 the upper one</source>
        <translation>Unterer Rand des Viewports; 0 ist der untere Rand des Fensters, 1 der obere</translation>
    </message>
    <message>
        <source>Upper right (fraction)</source>
        <translation>Oben rechts (Anteil)</translation>
    </message>
    <message>
        <source>Right edge of the viewport</source>
        <translation>Rechter Rand des Viewports</translation>
    </message>
    <message>
        <source>Upper edge of the viewport</source>
        <translation>Oberer Rand des Viewports</translation>
    </message>
    <message>
        <source>Lower left [pixel]</source>
        <translation>Unten links [Pixel]</translation>
    </message>
    <message>
        <source>Upper right [pixel]</source>
        <translation>Oben rechts [Pixel]</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>Stereo</translation>
    </message>
    <message>
        <source>Which eye sees this viewport, or how it shows both eyes at once</source>
        <translation>Welches Auge diesen Viewport sieht, oder wie er beide Augen zugleich bedient</translation>
    </message>
    <message>
        <source>Flip</source>
        <translation>Spiegeln</translation>
    </message>
    <message>
        <source>Mirrors the picture left to right, for rear projection</source>
        <translation>Vertauscht links und rechts, für Rückprojektion</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation>Horizontal</translation>
    </message>
    <message>
        <source>Turns the picture upside down, for hanging projectors</source>
        <translation>Vertauscht oben und unten, für hängende Projektoren</translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation>Vertikal</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Convert to planes</source>
        <translation>In Ebenen umwandeln</translation>
    </message>
    <message>
        <source>None yet: click the surface that this viewport shows.</source>
        <translation>Noch keine: Klicken Sie auf die Projektionsfläche, die dieser Viewport zeigt.</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>Mono</translation>
    </message>
    <message>
        <source>Both</source>
        <translation>Beide</translation>
    </message>
    <message>
        <source>One picture that both eyes see</source>
        <translation>Ein Bild, das beide Augen sehen</translation>
    </message>
    <message>
        <source>A picture for each eye; the list says how they are shown</source>
        <translation>Ein Bild für jedes Auge; die Liste sagt, wie sie gezeigt werden</translation>
    </message>
    <message>
        <source>Wall (No head tracking)</source>
        <translation>Wand (ohne Head-Tracking)</translation>
    </message>
    <message>
        <source>[pixel]</source>
        <translation>[Pixel]</translation>
    </message>
    <message>
        <source>Power Wall</source>
        <translation>Powerwall</translation>
    </message>
    <message>
        <source>Cave</source>
        <translation>Cave</translation>
    </message>
    <message>
        <source>Plane</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Tile</source>
        <translation>Kachel</translation>
    </message>
    <message>
        <source>Whole window</source>
        <translation>Ganzes Fenster</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Benutzerdefiniert</translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation>Deaktiviert</translation>
    </message>
    <message>
        <source>Double Buffered</source>
        <translation>Doppelt gepuffert</translation>
    </message>
    <message>
        <source>Horizontal Interlaced</source>
        <translation>Horizontal verschränkt</translation>
    </message>
    <message>
        <source>Vertical Interlaced</source>
        <translation>Vertikal verschränkt</translation>
    </message>
    <message>
        <source>Left/Right Split</source>
        <translation>Links/Rechts geteilt</translation>
    </message>
    <message>
        <source>Top/Bottom Split</source>
        <translation>Oben/Unten geteilt</translation>
    </message>
    <message>
        <source>Red/Cyan</source>
        <translation>Rot/Cyan</translation>
    </message>
    <message>
        <source>Blue/Yellow</source>
        <translation>Blau/Gelb</translation>
    </message>
    <message>
        <source>Green/Magenta</source>
        <translation>Grün/Magenta</translation>
    </message>
    <message>
        <source>Extended desktop</source>
        <translation>Erweiterter Desktop</translation>
    </message>
    <message>
        <source>Primary screen</source>
        <translation>Hauptbildschirm</translation>
    </message>
    <message>
        <source>Left (fraction)</source>
        <translation>Links (Anteil)</translation>
    </message>
    <message>
        <source>Right (fraction)</source>
        <translation>Rechts (Anteil)</translation>
    </message>
    <message>
        <source>Top (fraction)</source>
        <translation>Oben (Anteil)</translation>
    </message>
    <message>
        <source>Part of the tile height that fades out at the lower edge, which the render nodes call the top one</source>
        <translation>Blendbereich am unteren Rand, als Anteil der Kachelhöhe; die Renderknoten nennen ihn den oberen</translation>
    </message>
    <message>
        <source>Bottom (fraction)</source>
        <translation>Unten (Anteil)</translation>
    </message>
    <message>
        <source>Part of the tile height that fades out at the upper edge, which the render nodes call the bottom one</source>
        <translation>Blendbereich am oberen Rand, als Anteil der Kachelhöhe; die Renderknoten nennen ihn den unteren</translation>
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
        <source>Takes units and sums: 3.2 m, 12 in, 5520/3</source>
        <translation>Nimmt Einheiten und Summen: 3,2 m, 12 in, 5520/3</translation>
    </message>
</context>
<context>
    <name>zoHPCDisplayItem</name>
    <message>
        <source>A display with more than %1 viewports in its windows is not loaded.</source>
        <translation>Eine Anzeige mit mehr als %1 Viewports in ihren Fenstern wird nicht geladen.</translation>
    </message>
    <message>
        <source>Display %1</source>
        <translation>Anzeige %1</translation>
    </message>
</context>
<context>
    <name>zoHPCDisplayTools</name>
    <message>
        <source>Filter of the projections</source>
        <translation>Filter der Projektionen</translation>
    </message>
    <message>
        <source>Filter of windows and viewports</source>
        <translation>Filter der Fenster und Viewports</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Copies the selected windows to the nodes that follow theirs; each copy shows the tile that follows (Ctrl+D)</source>
        <translation>Kopiert die ausgewählten Fenster auf die Knoten, die auf ihre folgen; jede Kopie zeigt die nächste Kachel (Strg+D)</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Nodes whose windows show the surface</source>
        <translation>Knoten, deren Fenster die Fläche zeigen</translation>
    </message>
    <message>
        <source>%1, shown by %2</source>
        <translation>%1, gezeigt von %2</translation>
    </message>
    <message>
        <source>%1 projections are selected. The fields are those of %2 alone.</source>
        <translation>%1 Projektionen sind ausgewählt. Die Felder sind die von %2 allein.</translation>
    </message>
</context>
<context>
    <name>zoHPCDocumentLosses</name>
    <message>
        <source>the comment is left out</source>
        <translation>der Kommentar entfällt</translation>
    </message>
    <message>
        <source>the processing instruction is left out</source>
        <translation>die Verarbeitungsanweisung entfällt</translation>
    </message>
    <message>
        <source>the text is left out</source>
        <translation>der Text entfällt</translation>
    </message>
    <message>
        <source>there is no projection &quot;%1&quot;: the reference is left out</source>
        <translation>es gibt keine Projektion &quot;%1&quot;: der Verweis entfällt</translation>
    </message>
    <message>
        <source>the attribute &quot;%1&quot; of &quot;%2&quot; is left out</source>
        <translation>das Attribut &quot;%1&quot; von &quot;%2&quot; entfällt</translation>
    </message>
    <message>
        <source>the attribute &quot;%1&quot; of &quot;%2&quot; becomes &quot;%3&quot;</source>
        <translation>das Attribut &quot;%1&quot; von &quot;%2&quot; wird zu &quot;%3&quot;</translation>
    </message>
    <message>
        <source>everything from the NUL character on is left out</source>
        <translation>alles ab dem NUL-Zeichen entfällt</translation>
    </message>
    <message>
        <source>the element &quot;%1&quot; is left out</source>
        <translation>das Element &quot;%1&quot; entfällt</translation>
    </message>
</context>
<context>
    <name>zoHPCDocumentProblems</name>
    <message>
        <source>The hosts file &quot;%1&quot; cannot be read.</source>
        <translation>Die Hostdatei „%1“ lässt sich nicht lesen.</translation>
    </message>
    <message>
        <source>There is no hosts file &quot;%1&quot; here.</source>
        <translation>Hier gibt es keine Hostdatei „%1“.</translation>
    </message>
    <message>
        <source>What nodes, windows and tiles show is checked once every element is where it belongs.</source>
        <translation>Was Knoten, Fenster und Kacheln zeigen, wird geprüft, sobald jedes Element steht, wo es hingehört.</translation>
    </message>
</context>
<context>
    <name>zoHPCDocumentText</name>
    <message>
        <source>Cluster config line %1, column %2: %3</source>
        <translation>Clusterkonfiguration, Zeile %1, Spalte %2: %3</translation>
    </message>
    <message>
        <source>an element has more than %1 attributes</source>
        <translation>ein Element hat mehr als %1 Attribute</translation>
    </message>
    <message>
        <source>the document type declares too much</source>
        <translation>der Dokumenttyp vereinbart zu viel</translation>
    </message>
    <message>
        <source>more than %1 elements are nested</source>
        <translation>mehr als %1 Elemente sind ineinander verschachtelt</translation>
    </message>
</context>
<context>
    <name>zoHPCDocumentWriter</name>
    <message>
        <source>Attribute &apos;%1&apos; of &apos;%2&apos; is left out of the document: not an XML name.</source>
        <translation>Attribut &apos;%1&apos; von &apos;%2&apos; fehlt im Dokument: kein XML-Name.</translation>
    </message>
</context>
<context>
    <name>zoHPCGUIW</name>
    <message>
        <source>HPC Cluster</source>
        <translation>HPC-Cluster</translation>
    </message>
    <message>
        <source>toolBar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Load...</source>
        <translation>Laden...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Save As...</source>
        <translation>Speichern unter...</translation>
    </message>
    <message>
        <source>Import legacy...</source>
        <translation>Alte Konfiguration importieren...</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Edit configuration...</source>
        <translation>Konfiguration bearbeiten...</translation>
    </message>
    <message>
        <source>Display Setup...</source>
        <translation>Anzeigen einrichten...</translation>
    </message>
    <message>
        <source>Run network speed test...</source>
        <translation>Netzwerkgeschwindigkeit messen...</translation>
    </message>
    <message>
        <source>Show tiles</source>
        <translation>Kacheln anzeigen</translation>
    </message>
    <message>
        <source>Show test image</source>
        <translation>Testbild anzeigen</translation>
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
        <source>&amp;Diagnostics</source>
        <translation>Dia&amp;gnose</translation>
    </message>
    <message>
        <source>QuickActions</source>
        <translation>Schnellzugriff</translation>
    </message>
    <message>
        <source>Load Cluster Configuration</source>
        <translation>Clusterkonfiguration laden</translation>
    </message>
    <message>
        <source>Cluster Config (*.zhpc)</source>
        <translation>Clusterkonfiguration (*.zhpc)</translation>
    </message>
    <message>
        <source>Save Cluster Configuration</source>
        <translation>Clusterkonfiguration speichern</translation>
    </message>
    <message>
        <source>Load Legacy Configuration</source>
        <translation>Alte Konfiguration laden</translation>
    </message>
    <message>
        <source>Legacy Config (*.xml)</source>
        <translation>Alte Konfiguration (*.xml)</translation>
    </message>
    <message>
        <source>%1 holds no parameters of a legacy configuration.</source>
        <translation>%1 enthält keine Parameter einer alten Konfiguration.</translation>
    </message>
    <message>
        <source>Unable to load cluster config %1: %2</source>
        <translation>Clusterkonfiguration %1 kann nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>Unable to save cluster config %1: %2. What the file held before is still there.</source>
        <translation>Clusterkonfiguration %1 kann nicht gespeichert werden: %2. Der bisherige Inhalt der Datei ist noch da.</translation>
    </message>
    <message>
        <source>Unable to save cluster config %1: %2</source>
        <translation>Clusterkonfiguration %1 kann nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>%1 holds no cluster configuration.</source>
        <translation>%1 enthält keine Clusterkonfiguration.</translation>
    </message>
    <message>
        <source>Cluster config %1, line %2, column %3: the bytes are not UTF-8</source>
        <translation>Clusterkonfiguration %1, Zeile %2, Spalte %3: Die Bytes sind kein UTF-8</translation>
    </message>
    <message>
        <source>Unable to import legacy config %1: %2</source>
        <translation>Alte Konfiguration %1 kann nicht importiert werden: %2</translation>
    </message>
    <message>
        <source>Cluster config %1 holds bytes that are not UTF-8 and was not overwritten, since they cannot be kept in %2: %3. Save under another name.</source>
        <translation>Die Cluster-Konfiguration %1 enthält Bytes, die kein UTF-8 sind, und wurde nicht überschrieben, denn sie lassen sich nicht in %2 aufheben: %3. Speichern Sie unter einem anderen Namen.</translation>
    </message>
    <message>
        <source>Cluster config %1 holds bytes that are not UTF-8. What it held before it was saved is in %2.</source>
        <translation>Die Cluster-Konfiguration %1 enthielt Bytes, die kein UTF-8 sind. Was sie vor dem Speichern enthielt, steht in %2.</translation>
    </message>
</context>
<context>
    <name>zoHPCHostsReading</name>
    <message>
        <source>&quot;%1&quot; is no host name and is left out</source>
        <translation>„%1“ ist kein Rechnername und wird ausgelassen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; reads as &quot;%2&quot;; --names keeps it</source>
        <translation>„%1“ wird als „%2“ gelesen; --names behält es</translation>
    </message>
    <message>
        <source>&quot;%1&quot; reads as &quot;%2&quot;</source>
        <translation>„%1“ wird als „%2“ gelesen</translation>
    </message>
    <message>
        <source>invalid UTF-8</source>
        <translation>ungültiges UTF-8</translation>
    </message>
    <message>
        <source>the control character U+%1 cannot stand in hosts text</source>
        <translation>das Steuerzeichen U+%1 darf im Text der Rechner nicht stehen</translation>
    </message>
    <message>
        <source>braces are more than %1 deep</source>
        <translation>Klammern sind mehr als %1 tief</translation>
    </message>
    <message>
        <source>more than %1 names</source>
        <translation>mehr als %1 Namen</translation>
    </message>
    <message>
        <source>names of more than %1 characters altogether</source>
        <translation>Namen mit zusammen mehr als %1 Zeichen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; fills nothing: the names differ before their number</source>
        <translation>„%1“ füllt nichts auf: die Namen unterscheiden sich vor ihrer Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; fills nothing: it runs backwards</source>
        <translation>„%1“ füllt nichts auf: es läuft rückwärts</translation>
    </message>
    <message>
        <source>&quot;%1&quot; fills nothing: the names are more than %2 apart</source>
        <translation>„%1“ füllt nichts auf: die Namen liegen mehr als %2 auseinander</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no range: both names must be text with a number at its end</source>
        <translation>„%1“ ist kein Bereich: beide Namen müssen Text mit einer Zahl am Ende sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no range: both names must be text with a number at its end; write &quot;%2&quot;</source>
        <translation>„%1“ ist kein Bereich: beide Namen müssen Text mit einer Zahl am Ende sein; schreiben Sie „%2“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no range: the numbers are too long; write &quot;%2&quot;</source>
        <translation>„%1“ ist kein Bereich: die Zahlen sind zu lang; schreiben Sie „%2“</translation>
    </message>
    <message>
        <source>&quot;-&quot; fills nothing: it does not stand between two hosts</source>
        <translation>„-“ füllt nichts auf: es steht nicht zwischen zwei Rechnern</translation>
    </message>
</context>
<context>
    <name>zoHPCHostsSummary</name>
    <message>
        <source>&quot;%1&quot; is left out; write &quot;%2&quot;</source>
        <translation>„%1“ wird ausgelassen; schreiben Sie „%2“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; reads as the one node &quot;%2&quot;; write &quot;%3&quot;</source>
        <translation>„%1“ wird als der eine Knoten „%2“ gelesen; schreiben Sie „%3“</translation>
    </message>
    <message>
        <source>No nodes</source>
        <translation>Keine Knoten</translation>
    </message>
    <message>
        <source>1 node</source>
        <translation>1 Knoten</translation>
    </message>
    <message>
        <source>%1 nodes</source>
        <translation>%1 Knoten</translation>
    </message>
    <message>
        <source>%1 in %2 networks</source>
        <comment>nodes</comment>
        <translation>%1 in %2 Netzwerken</translation>
    </message>
    <message>
        <source>%1, 1 gateway</source>
        <translation>%1, 1 Gateway</translation>
    </message>
    <message>
        <source>%1, %2 gateways</source>
        <translation>%1, %2 Gateways</translation>
    </message>
</context>
<context>
    <name>zoHPCHostsSyntax</name>
    <message>
        <source>&quot;%1&quot; is not closed</source>
        <translation>„%1“ ist nicht geschlossen</translation>
    </message>
    <message>
        <source>&quot;]&quot; closes nothing</source>
        <translation>„]“ schließt nichts</translation>
    </message>
    <message>
        <source>&quot;[&quot; is not closed</source>
        <translation>„[“ ist nicht geschlossen</translation>
    </message>
    <message>
        <source>text behind the options of a host; options come last</source>
        <translation>Text hinter den Optionen eines Rechners; Optionen kommen zuletzt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is empty</source>
        <translation>„%1“ ist leer</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no range of numbers</source>
        <translation>„%1“ ist kein Zahlenbereich</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither a range of numbers, such as [1-16], nor options, such as [rt=0]</source>
        <translation>„%1“ ist weder ein Zahlenbereich wie [1-16] noch Optionen wie [rt=0]</translation>
    </message>
    <message>
        <source>&quot;%1&quot; closes nothing</source>
        <translation>„%1“ schließt nichts</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not close &quot;%2&quot;</source>
        <translation>„%1“ schließt „%2“ nicht</translation>
    </message>
    <message>
        <source>&quot;%1&quot; follows no host that could forward to the network</source>
        <translation>„%1“ folgt auf keinen Rechner, der in das Netz weiterleiten könnte</translation>
    </message>
    <message>
        <source>this is XML, not hosts text; &apos;zohpc nodes FILE&apos; writes the hosts of a configuration</source>
        <translation>das ist XML, kein Text von Rechnern; „zohpc nodes FILE“ schreibt die Rechner einer Konfiguration</translation>
    </message>
    <message>
        <source>groups of hosts (&quot;%1&quot;) are not supported; write their hosts</source>
        <translation>Gruppen von Rechnern („%1“) werden nicht unterstützt; schreiben Sie ihre Rechner</translation>
    </message>
    <message>
        <source>the operator &quot;%1&quot; is not supported; write the hosts that are left</source>
        <translation>der Operator „%1“ wird nicht unterstützt; schreiben Sie die Rechner, die übrig bleiben</translation>
    </message>
</context>
<context>
    <name>zoHPCLayoutPane</name>
    <message>
        <source>Room</source>
        <translation>Raum</translation>
    </message>
    <message>
        <source>Screens</source>
        <translation>Bildschirme</translation>
    </message>
    <message>
        <source>Size of the screens: windows that reach beyond it stand out. &quot;Automatic&quot; takes what the windows need.</source>
        <translation>Größe der Bildschirme: Fenster, die darüber hinausragen, fallen auf. „Automatisch“ nimmt, was die Fenster brauchen.</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>%1 x %2</source>
        <translation>%1 x %2</translation>
    </message>
    <message>
        <source>Screen [pixel]</source>
        <translation>Bildschirm [Pixel]</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Takes everything into the picture</source>
        <translation>Nimmt alles ins Bild</translation>
    </message>
    <message>
        <source>Save picture...</source>
        <translation>Bild speichern...</translation>
    </message>
    <message>
        <source>Writes the picture to a file: SVG, PNG or PDF</source>
        <translation>Schreibt das Bild in eine Datei: SVG, PNG oder PDF</translation>
    </message>
    <message>
        <source>Save picture</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>Looks at the room from the viewer&apos;s side</source>
        <translation>Blickt von der Seite des Betrachters in den Raum</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Looks at the room from above</source>
        <translation>Blickt von oben in den Raum</translation>
    </message>
    <message>
        <source>Dimensions</source>
        <translation>Maße</translation>
    </message>
    <message>
        <source>Shows how wide and high each wall is</source>
        <translation>Zeigt, wie breit und hoch jede Wand ist</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Shows where on each surface its window lies (a line) and the window&apos;s monitor (dashes), where there is room</source>
        <translation>Zeigt, wo auf jeder Fläche ihr Fenster liegt (Linie) und wo dessen Bildschirm (gestrichelt), wenn der Platz reicht</translation>
    </message>
</context>
<context>
    <name>zoHPCNetworkPicture</name>
    <message>
        <source>Network %1</source>
        <translation>Netzwerk %1</translation>
    </message>
    <message>
        <source>Network %1: %2</source>
        <translation>Netzwerk %1: %2</translation>
    </message>
    <message>
        <source>%1 (nodes behind: %2)</source>
        <translation>%1 (Knoten dahinter: %2)</translation>
    </message>
    <message>
        <source>1 node</source>
        <translation>1 Knoten</translation>
    </message>
    <message>
        <source>%1 nodes</source>
        <translation>%1 Knoten</translation>
    </message>
    <message>
        <source>encrypted</source>
        <translation>verschlüsselt</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>deaktiviert</translation>
    </message>
    <message>
        <source>No networks</source>
        <translation>Keine Netzwerke</translation>
    </message>
    <message>
        <source>drives a display</source>
        <translation>treibt eine Anzeige</translation>
    </message>
    <message>
        <source>does not render</source>
        <translation>rendert nicht</translation>
    </message>
    <message>
        <source>gateway to</source>
        <translation>Gateway zu</translation>
    </message>
</context>
<context>
    <name>zoHPCNodeNames</name>
    <message>
        <source>has a window</source>
        <translation>hat ein Fenster</translation>
    </message>
    <message>
        <source>gateway</source>
        <translation>Gateway</translation>
    </message>
</context>
<context>
    <name>zoHPCPictureFile</name>
    <message>
        <source>Scalable picture (*.svg);;Picture (*.png);;Document (*.pdf)</source>
        <translation>Skalierbares Bild (*.svg);;Bild (*.png);;Dokument (*.pdf)</translation>
    </message>
    <message>
        <source>Unable to save picture %1: %2</source>
        <translation>Bild %1 kann nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>Unable to write picture %1 in the format &quot;%2&quot; at %3 x %4</source>
        <translation>Bild %1 kann nicht im Format „%2“ mit %3 x %4 geschrieben werden</translation>
    </message>
</context>
<context>
    <name>zoHPCPreferencesGUII</name>
    <message>
        <source>Cluster</source>
        <translation>Cluster</translation>
    </message>
    <message>
        <source>Default Config File</source>
        <translation>Standardkonfiguration</translation>
    </message>
    <message>
        <source>Cluster configuration that is loaded at start; empty for none</source>
        <translation>Clusterkonfiguration, die beim Start geladen wird; leer für keine</translation>
    </message>
    <message>
        <source>Choose the file</source>
        <translation>Datei auswählen</translation>
    </message>
    <message>
        <source>Load HPC Cluster Configuration</source>
        <translation>HPC-Clusterkonfiguration laden</translation>
    </message>
</context>
<context>
    <name>zoHPCProblemModel</name>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Fix</source>
        <translation>Abhilfe</translation>
    </message>
</context>
<context>
    <name>zoHPCProblems</name>
    <message>
        <source>Viewport %1 of window %2 of display %3 shows no projection. Choose one, or delete the viewport.</source>
        <translation>Viewport %1 in Fenster %2 von Anzeige %3 zeigt keine Projektion. Wählen Sie eine oder löschen Sie den Viewport.</translation>
    </message>
    <message>
        <source>Viewport %1 of window %2 of display %3 shows the projection &quot;%4&quot;, which does not exist. Choose another one.</source>
        <translation>Viewport %1 in Fenster %2 von Anzeige %3 zeigt die Projektion „%4“, die es nicht gibt. Wählen Sie eine andere.</translation>
    </message>
    <message>
        <source>Window %1 of display %2 has no render node. Choose the one that has its screen.</source>
        <translation>Fenster %1 von Anzeige %2 hat keinen Renderknoten. Wählen Sie den mit seinem Bildschirm.</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>%1 verwenden</translation>
    </message>
    <message>
        <source>Window %1 of display %2 is on the node &quot;%3&quot;, which the cluster does not have. Choose another one.</source>
        <translation>Fenster %1 von Anzeige %2: Knoten „%3“ ist nicht im Cluster. Wählen Sie einen anderen.</translation>
    </message>
    <message>
        <source>Window %1 of display %2 is on the node &quot;%3&quot;, which is disabled. Enable it, or choose another one.</source>
        <translation>Fenster %1 von Anzeige %2: Knoten „%3“ ist deaktiviert. Aktivieren Sie ihn oder wählen Sie einen anderen.</translation>
    </message>
    <message>
        <source>Enable %1</source>
        <translation>%1 aktivieren</translation>
    </message>
    <message>
        <source>Window %1 of display %2 and window %3 of display %4 overlap on one screen of the node &quot;%5&quot;. Move one of them, or choose another screen.</source>
        <translation>Überlappung auf „%5“: Fenster %1 von Anzeige %2 und Fenster %3 von Anzeige %4. Verschieben Sie eines davon oder wählen Sie einen anderen Bildschirm.</translation>
    </message>
    <message>
        <source>No viewport shows &quot;%1&quot;. Give it a window, or delete the projection if nothing stands there.</source>
        <translation>Kein Viewport zeigt „%1“. Geben Sie ihm ein Fenster oder löschen Sie die Projektion, wenn dort nichts steht.</translation>
    </message>
    <message>
        <source>More than one viewport shows &quot;%1&quot; to the same eye. Let each of them show a tile of its own.</source>
        <translation>Mehr als ein Viewport zeigt „%1“ demselben Auge. Jeder sollte eine eigene Kachel zeigen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is shown to the left eye, but not to the right eye. Add a viewport for that eye.</source>
        <translation>Nur das linke Auge sieht „%1“, das rechte nicht. Fügen Sie einen Viewport für das rechte Auge hinzu.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is shown to the right eye, but not to the left eye. Add a viewport for that eye.</source>
        <translation>Nur das rechte Auge sieht „%1“, das linke nicht. Fügen Sie einen Viewport für das linke Auge hinzu.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no area. Measure its corners or sizes again.</source>
        <translation>„%1“ hat keine Fläche. Messen Sie Ecken oder Größen nach.</translation>
    </message>
    <message>
        <source>The corner of &quot;%1&quot; is %2 degrees off a right angle.</source>
        <translation>Die Ecke von „%1“ weicht um %2 Grad vom rechten Winkel ab.</translation>
    </message>
    <message>
        <source>Make square</source>
        <translation>Rechtwinklig machen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; faces away from the viewer: its picture is mirrored.</source>
        <translation>„%1“ ist vom Betrachter abgewandt: Das Bild ist gespiegelt.</translation>
    </message>
    <message>
        <source>Turn round</source>
        <translation>Umdrehen</translation>
    </message>
    <message>
        <source>Make sizes positive</source>
        <translation>Größen positiv machen</translation>
    </message>
    <message>
        <source>Fit to overlap</source>
        <translation>An Überlappung anpassen</translation>
    </message>
    <message>
        <source>Multiply by 1000</source>
        <translation>Mit 1000 malnehmen</translation>
    </message>
    <message>
        <source>%1 number %2 holds no node. Add one, or delete the network.</source>
        <translation>%1 Nummer %2 enthält keinen Knoten. Fügen Sie einen hinzu oder löschen Sie das Netzwerk.</translation>
    </message>
    <message>
        <source>%1 number %2 holds no node that is enabled. Enable one, or disable the network.</source>
        <translation>%1 Nummer %2 enthält keinen aktivierten Knoten. Aktivieren Sie einen oder deaktivieren Sie das Netzwerk.</translation>
    </message>
    <message>
        <source>Enable its nodes</source>
        <translation>Knoten aktivieren</translation>
    </message>
    <message>
        <source>%1: option &quot;%2&quot; has the unknown value &quot;%3&quot;.</source>
        <translation>%1: Option „%2“ hat den unbekannten Wert „%3“.</translation>
    </message>
    <message>
        <source>Use the default</source>
        <translation>Standardwert verwenden</translation>
    </message>
    <message>
        <source>Cluster</source>
        <translation>Cluster</translation>
    </message>
    <message>
        <source>%1 number %2</source>
        <translation>%1 Nummer %2</translation>
    </message>
    <message>
        <source>%1 nodes are called &quot;%2&quot;, and no window is on &quot;%3&quot;. Remove or rename one of them, or give each a window.</source>
        <translation>%1 Knoten heißen „%2“, und auf „%3“ liegt kein Fenster. Entfernen Sie einen davon oder benennen Sie ihn um, oder geben Sie jedem ein Fenster.</translation>
    </message>
    <message>
        <source>left</source>
        <translation>linken</translation>
    </message>
    <message>
        <source>right</source>
        <translation>rechten</translation>
    </message>
    <message>
        <source>lower</source>
        <translation>unteren</translation>
    </message>
    <message>
        <source>upper</source>
        <translation>oberen</translation>
    </message>
    <message>
        <source>The edge blending of &quot;%1&quot; at its %2 edge is %3 of the plane wide, its overlap with other planes %4: the seam is dark.</source>
        <translation>Die Randüberblendung von „%1“ am %2 Rand ist %3 der Ebene breit, die Überlappung mit anderen Ebenen %4: Die Naht ist dunkel.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2 mm away from the viewer. Was its distance measured in metres?</source>
        <translation>„%1“ ist %2 mm vom Betrachter entfernt. Wurde der Abstand in Metern gemessen?</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has a size of %2 mm. Was it measured in metres?</source>
        <translation>„%1“ ist %2 mm groß. Wurde in Metern gemessen?</translation>
    </message>
    <message>
        <source>Two projections are called &quot;%1&quot;. A file keeps names alone: when it is loaded, their viewports show the last one. Rename one of them.</source>
        <translation>Zwei Projektionen heißen „%1“. Eine Datei enthält nur Namen: Nach dem Laden zeigen ihre Viewports die letzte. Benennen Sie eine davon um.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and &quot;%2&quot; have tiles of the same names. A file keeps names alone: when it is loaded, their viewports show the last one. Rename one of them.</source>
        <translation>„%1“ und „%2“ haben Kacheln gleichen Namens. Eine Datei enthält nur Namen: Nach dem Laden zeigen ihre Viewports die letzte. Benennen Sie eine davon um.</translation>
    </message>
    <message>
        <source>Rename to &quot;%1&quot;</source>
        <translation>In „%1“ umbenennen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is of the type &quot;%2&quot;, which there is not: it shows nothing. Types are %3.</source>
        <translation>„%1“ hat den Typ „%2“, den es nicht gibt, und zeigt nichts. Typen sind %3.</translation>
    </message>
    <message>
        <source>Make it a %1</source>
        <translation>Zu %1 machen</translation>
    </message>
    <message>
        <source>The cave &quot;%1&quot; has no walls: it shows nothing. Switch on those that it has.</source>
        <translation>Die Cave „%1“ hat keine Wände und zeigt nichts. Schalten Sie die vorhandenen ein.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has %2 rows and %3 columns, which is too many: it shows nothing. At most %4 tiles are supported.</source>
        <translation>„%1“ hat %2 Zeilen und %3 Spalten. Das sind zu viele: Sie zeigt nichts. Höchstens %4 Kacheln sind möglich.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has %2 rows and %3 columns: it shows nothing. Each has to be 1 at least.</source>
        <translation>„%1“ hat %2 Zeilen und %3 Spalten und zeigt nichts. Beides muss mindestens 1 sein.</translation>
    </message>
    <message>
        <source>Use 1</source>
        <translation>1 verwenden</translation>
    </message>
    <message>
        <source>The gaps of %2 between the tiles of &quot;%1&quot; leave nothing of the tiles. Measure them again.</source>
        <translation>Die Lücken von %2 zwischen den Kacheln von „%1“ lassen von den Kacheln nichts übrig. Messen Sie nach.</translation>
    </message>
    <message>
        <source>The tiles of &quot;%1&quot; overlap by %2, but are only %3 wide or high: at most half of a tile can be shared. Measure the overlap again.</source>
        <translation>Die Kacheln von „%1“ überlappen sich um %2, sind aber nur %3 breit oder hoch: Höchstens eine halbe Kachel kann geteilt sein. Messen Sie nach.</translation>
    </message>
    <message>
        <source>Use %1 mm</source>
        <translation>%1 mm verwenden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is shown without stereo, the other tiles of &quot;%2&quot; in stereo. Set the same mode for all of them.</source>
        <translation>„%1“ wird ohne Stereo gezeigt, die anderen Kacheln von „%2“ in Stereo. Stellen Sie für alle dieselbe Art ein.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is shown in stereo, the other tiles of &quot;%2&quot; without. Set the same mode for all of them.</source>
        <translation>„%1“ wird in Stereo gezeigt, die anderen Kacheln von „%2“ ohne. Stellen Sie für alle dieselbe Art ein.</translation>
    </message>
    <message>
        <source>Set to &quot;%1&quot;</source>
        <translation>Auf „%1“ stellen</translation>
    </message>
    <message>
        <source>Viewports %1 and %2 of window %3 of display %4 lie over each other: only one of them is seen there. Give each a part of the window of its own, or a window of its own.</source>
        <translation>Viewport %1 und %2 in Fenster %3 von Anzeige %4 liegen übereinander: Nur einer ist dort zu sehen. Geben Sie jedem einen eigenen Teil des Fensters oder ein eigenes Fenster.</translation>
    </message>
    <message>
        <source>Viewport %1 of window %2 of display %3 has no area: its corners are %4. Set the upper right corner, or the position &quot;Whole window&quot;.</source>
        <translation>Viewport %1 in Fenster %2 von Anzeige %3 hat keine Fläche: Seine Ecken sind %4. Setzen Sie die rechte obere Ecke oder die Position „Ganzes Fenster“.</translation>
    </message>
    <message>
        <source>Fill the window</source>
        <translation>Fenster füllen</translation>
    </message>
    <message>
        <source>Viewport %1 of window %2 of display %3 reaches beyond its window: its corners are %4, the window has %5 x %6 pixels.</source>
        <translation>Viewport %1 in Fenster %2 von Anzeige %3 ragt über sein Fenster hinaus: Seine Ecken sind %4, das Fenster hat %5 x %6 Pixel.</translation>
    </message>
    <message>
        <source>Viewport %1 of window %2 of display %3 reaches beyond its window: its corners are %4, the window is from 0 to 1.</source>
        <translation>Viewport %1 in Fenster %2 von Anzeige %3 ragt über sein Fenster hinaus: Seine Ecken sind %4, das Fenster reicht von 0 bis 1.</translation>
    </message>
    <message>
        <source>Cut to the window</source>
        <translation>Auf das Fenster beschneiden</translation>
    </message>
    <message>
        <source>The lower left corner of viewport %1 of window %2 of display %3 lies right of the upper right one or above it: its corners are %4.</source>
        <translation>Die linke untere Ecke von Viewport %1 in Fenster %2 von Anzeige %3 liegt rechts von der rechten oberen oder über ihr: Seine Ecken sind %4.</translation>
    </message>
    <message>
        <source>Swap the corners</source>
        <translation>Ecken vertauschen</translation>
    </message>
    <message>
        <source>Window %1 of display %2 has no viewport: it stays black. Add one, or delete the window.</source>
        <translation>Fenster %1 von Anzeige %2 hat keinen Viewport und bleibt schwarz. Fügen Sie einen hinzu oder löschen Sie das Fenster.</translation>
    </message>
    <message>
        <source>Window %1 of display %2 has a size of %3 x %4 pixels: nobody sees it. Set its size, or &quot;Full screen&quot;.</source>
        <translation>Fenster %1 von Anzeige %2 ist %3 x %4 Pixel groß: Niemand sieht es. Setzen Sie seine Größe oder „Vollbild“.</translation>
    </message>
    <message>
        <source>Window %1 of display %2 is on the screen &quot;%3&quot;, which there is not. In a file screens are numbers: 0 is the first one, -1 the primary one, -2 all of them.</source>
        <translation>Fenster %1 von Anzeige %2 liegt auf dem Bildschirm „%3“, den es nicht gibt. In einer Datei sind Bildschirme Zahlen: 0 ist der erste, -1 der primäre, -2 alle zusammen.</translation>
    </message>
    <message>
        <source>Use screen %1</source>
        <translation>Bildschirm %1 verwenden</translation>
    </message>
    <message>
        <source>Window %1 of display %2 and window %3 of display %4 overlap: &quot;%5&quot; and &quot;%6&quot; are one machine. Give each a screen of its own.</source>
        <translation>Fenster %1 von Anzeige %2 und Fenster %3 von Anzeige %4 überlappen sich: „%5“ und „%6“ sind ein Rechner. Geben Sie jedem einen eigenen Bildschirm.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is shown without stereo, the planes beside it in stereo. Set the same mode for all of them.</source>
        <translation>„%1“ wird ohne Stereo gezeigt, die Ebenen daneben in Stereo. Stellen Sie für alle dieselbe Art ein.</translation>
    </message>
    <message>
        <source>Display %1 has an eye separation of %2 mm. Was it measured in metres? Eyes are about 65 mm apart.</source>
        <translation>Anzeige %1 hat einen Augenabstand von %2 mm. Wurde in Metern gemessen? Augen sind etwa 65 mm voneinander entfernt.</translation>
    </message>
    <message>
        <source>Display %1 shows stereo with an eye separation of 0: both eyes see the same picture. Eyes are about 65 mm apart.</source>
        <translation>Anzeige %1 zeigt Stereo mit dem Augenabstand 0: Beide Augen sehen dasselbe Bild. Augen sind etwa 65 mm voneinander entfernt.</translation>
    </message>
    <message>
        <source>Display %1 has an eye separation of %2 mm and display %3 of the same user one above 0: one of them shows each eye the picture of the other.</source>
        <translation>Anzeige %1 hat einen Augenabstand von %2 mm und Anzeige %3 desselben Benutzers einen über 0: Eine von beiden zeigt jedem Auge das Bild des anderen.</translation>
    </message>
    <message>
        <source>&quot;%1...&quot; has a name of %2 characters, too long to be in that of each tile: it shows nothing. Give it a shorter one.</source>
        <translation>„%1...“ hat einen Namen von %2 Zeichen, zu lang für die Namen der Kacheln: Sie zeigt nichts. Geben Sie ihr einen kürzeren.</translation>
    </message>
    <message>
        <source>Display %1 has an eye separation of %2 mm, below 0: each eye sees the picture of the other, which is right where the projectors or the glasses are swapped.</source>
        <translation>Anzeige %1 hat einen Augenabstand von %2 mm, unter 0: Jedes Auge sieht das Bild des anderen. Das ist richtig, wo Projektoren oder Brillen vertauscht sind.</translation>
    </message>
    <message>
        <source>Add a window</source>
        <translation>Fenster anlegen</translation>
    </message>
    <message>
        <source>Add %1 windows</source>
        <translation>%1 Fenster anlegen</translation>
    </message>
    <message>
        <source>Node number %1 of %2 has no name: no server can be started on it. Enter its host name, or remove it.</source>
        <translation>Knoten Nummer %1 von %2 hat keinen Namen: auf ihm kann kein Server gestartet werden. Geben Sie den Hostnamen ein, oder entfernen Sie ihn.</translation>
    </message>
    <message>
        <source>Viewport %1 of window %2 of display %3 shows &quot;%4&quot; %5 % too wide: the shape of its pixels is not that of the plane. Correct the size of the window or that of the plane.</source>
        <translation>Viewport %1 in Fenster %2 von Anzeige %3 zeigt „%4“ %5 % zu breit: die Form seiner Pixel ist nicht die der Ebene. Berichtigen Sie die Größe des Fensters oder die der Ebene.</translation>
    </message>
    <message>
        <source>Viewport %1 of window %2 of display %3 shows &quot;%4&quot; %5 % too high: the shape of its pixels is not that of the plane. Correct the size of the window or that of the plane.</source>
        <translation>Viewport %1 in Fenster %2 von Anzeige %3 zeigt „%4“ %5 % zu hoch: die Form seiner Pixel ist nicht die der Ebene. Berichtigen Sie die Größe des Fensters oder die der Ebene.</translation>
    </message>
    <message>
        <source>So do %1 more of the same projection.</source>
        <translation>%1 weitere derselben Projektion ebenso.</translation>
    </message>
    <message>
        <source>Window %1 of display %2 begins at %3, %4, outside of its screen, which begins at 0, 0: that part of it is not seen. Move it, or choose the desktop over all screens.</source>
        <translation>Fenster %1 von Anzeige %2 beginnt bei %3, %4, außerhalb seines Bildschirms, der bei 0, 0 beginnt: dieser Teil ist nicht zu sehen. Verschieben Sie es, oder wählen Sie den Desktop über alle Bildschirme.</translation>
    </message>
    <message>
        <source>Move it onto the screen</source>
        <translation>Auf den Bildschirm verschieben</translation>
    </message>
    <message>
        <source>Display %1 has no window: nobody sees anything of it. Add a window, or delete the display.</source>
        <translation>Anzeige %1 hat kein Fenster: niemand sieht etwas von ihr. Fügen Sie ein Fenster hinzu, oder löschen Sie die Anzeige.</translation>
    </message>
</context>
<context>
    <name>zoHPCProblemsView</name>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>No problems</source>
        <translation>Keine Probleme</translation>
    </message>
    <message>
        <source>1 problem</source>
        <translation>1 Problem</translation>
    </message>
    <message>
        <source>%1 problems</source>
        <translation>%1 Probleme</translation>
    </message>
</context>
<context>
    <name>zoHPCProjectionItem</name>
    <message>
        <source>Projection %1 with %2 x %3 tiles is not laid out: at most %4 tiles are supported.</source>
        <translation>Projektion %1 mit %2 x %3 Kacheln wird nicht aufgeteilt: höchstens %4 Kacheln sind möglich.</translation>
    </message>
    <message>
        <source>Projection %1... is not laid out: its tiles would repeat too long a name.</source>
        <translation>Projektion %1... wird nicht aufgeteilt: Ihre Kacheln würden einen zu langen Namen wiederholen.</translation>
    </message>
</context>
<context>
    <name>zoHPCReferences</name>
    <message>
        <source>There is no projection &quot;%1&quot;: did you mean &quot;%2&quot;?</source>
        <translation>Es gibt keine Projektion „%1“: ist „%2“ gemeint?</translation>
    </message>
    <message>
        <source>There is no projection &quot;%1&quot;.</source>
        <translation>Es gibt keine Projektion „%1“.</translation>
    </message>
    <message>
        <source>There is no projection &quot;%1&quot;: &quot;%2&quot; has tiles up to row:%3 col:%4.</source>
        <translation>Es gibt keine Projektion „%1“: „%2“ hat Kacheln bis row:%3 col:%4.</translation>
    </message>
</context>
<context>
    <name>zoHPCRenderSetup</name>
    <message>
        <source>viewport %1 of window %2 of display %3</source>
        <translation>Viewport %1 von Fenster %2 von Anzeige %3</translation>
    </message>
    <message>
        <source>%1 is left out: %2</source>
        <translation>%1 wird ausgelassen: %2</translation>
    </message>
    <message>
        <source>its window has no node</source>
        <translation>sein Fenster hat keinen Knoten</translation>
    </message>
    <message>
        <source>the cluster has no node &quot;%1&quot;</source>
        <translation>der Cluster hat keinen Knoten „%1“</translation>
    </message>
    <message>
        <source>the node %1 is disabled</source>
        <translation>der Knoten %1 ist deaktiviert</translation>
    </message>
    <message>
        <source>it shows no projection</source>
        <translation>er zeigt keine Projektion</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not one plane</source>
        <translation>„%1“ ist nicht eine einzelne Ebene</translation>
    </message>
    <message>
        <source>the plane &quot;%1&quot; has no area</source>
        <translation>die Ebene „%1“ hat keine Fläche</translation>
    </message>
    <message>
        <source>it is further than %1 pixels away</source>
        <translation>er liegt mehr als %1 Pixel entfernt</translation>
    </message>
    <message>
        <source>it has no pixels</source>
        <translation>er hat keine Pixel</translation>
    </message>
</context>
<context>
    <name>zoHPCReport</name>
    <message>
        <source>SHA-256 %1...</source>
        <translation>SHA-256 %1...</translation>
    </message>
    <message>
        <source>Date: %1 UTC</source>
        <translation>Datum: %1 UTC</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Datei: %1</translation>
    </message>
    <message>
        <source>SHA-256: %1</source>
        <translation>SHA-256: %1</translation>
    </message>
    <message>
        <source>Nodes: %1. Networks: %2. Walls: %3. Windows: %4. Pictures on tiles: %5. Problems: %6.</source>
        <translation>Knoten: %1. Netzwerke: %2. Wände: %3. Fenster: %4. Bilder auf Kacheln: %5. Probleme: %6.</translation>
    </message>
    <message>
        <source>Front elevations</source>
        <translation>Vorderansichten</translation>
    </message>
    <message>
        <source>There are no walls.</source>
        <translation>Es gibt keine Wände.</translation>
    </message>
    <message>
        <source>As seen by one who stands before the wall. Hatched tiles stay dark, grey strips are blended.</source>
        <translation>Wie man die Wand sieht, wenn man vor ihr steht. Schraffierte Kacheln bleiben dunkel, graue Streifen werden überblendet.</translation>
    </message>
    <message>
        <source>Order of the cables</source>
        <translation>Reihenfolge der Kabel</translation>
    </message>
    <message>
        <source>Wall by wall, from the upper left, row by row.</source>
        <translation>Wand für Wand, von links oben, Zeile für Zeile.</translation>
    </message>
    <message>
        <source>row %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>Wall</source>
        <translation>Wand</translation>
    </message>
    <message>
        <source>Tile</source>
        <translation>Kachel</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgang</translation>
    </message>
    <message>
        <source>Eye</source>
        <translation>Auge</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Windows and tiles</source>
        <translation>Fenster und Kacheln</translation>
    </message>
    <message>
        <source>Corners in millimetres from the viewer: x to the right, y up, the viewer looks along -z.</source>
        <translation>Ecken in Millimetern vom Betrachter aus: x nach rechts, y nach oben, der Betrachter blickt entlang -z.</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Lower left</source>
        <translation>Unten links</translation>
    </message>
    <message>
        <source>Lower right</source>
        <translation>Unten rechts</translation>
    </message>
    <message>
        <source>Upper right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Blends</source>
        <translation>Überblendung</translation>
    </message>
    <message>
        <source>Tiled walls have pixels alone: no corners without the size of a pixel.</source>
        <translation>Gekachelte Wände haben nur Pixel: keine Ecken ohne die Größe eines Pixels.</translation>
    </message>
    <message>
        <source>Networks</source>
        <translation>Netzwerke</translation>
    </message>
    <message>
        <source>There are no networks.</source>
        <translation>Es gibt keine Netzwerke.</translation>
    </message>
    <message>
        <source>(level %1) </source>
        <translation>(Ebene %1) </translation>
    </message>
    <message>
        <source>encrypted</source>
        <translation>verschlüsselt</translation>
    </message>
    <message>
        <source>gateway</source>
        <translation>Gateway</translation>
    </message>
    <message>
        <source>does not render</source>
        <translation>rendert nicht</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>deaktiviert</translation>
    </message>
    <message>
        <source>Network %1</source>
        <translation>Netzwerk %1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 nodes</source>
        <translation>%1 Knoten</translation>
    </message>
    <message>
        <source>Network, node</source>
        <translation>Netzwerk, Knoten</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Drives</source>
        <translation>Treibt</translation>
    </message>
    <message>
        <source>Viewer</source>
        <translation>Betrachter</translation>
    </message>
    <message>
        <source>The viewer is at x 0, y 0, z 0 and looks along -z; y is up. Lengths are millimetres.</source>
        <translation>Der Betrachter ist bei x 0, y 0, z 0 und blickt entlang -z; y ist oben. Längen sind Millimeter.</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>Eye separation</source>
        <translation>Augenabstand</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Hardware sync</source>
        <translation>Hardware-Synchronisation</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
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
        <source>Distance</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Centre x</source>
        <translation>Mitte x</translation>
    </message>
    <message>
        <source>Centre y</source>
        <translation>Mitte y</translation>
    </message>
    <message>
        <source>Turned to the viewer&apos;s right by degrees</source>
        <translation>Nach rechts gedreht um Grad</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>None.</source>
        <translation>Keine.</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Schwere</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Remedy</source>
        <translation>Abhilfe</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>%1, column %2</source>
        <translation>%1, Spalte %2</translation>
    </message>
    <message>
        <source>1 node</source>
        <translation>1 Knoten</translation>
    </message>
    <message>
        <source>the report has more than %1 pages, with %2 problems: mend those first</source>
        <translation>der Bericht hat mehr als %1 Seiten, mit %2 Problemen: diese zuerst beheben</translation>
    </message>
    <message>
        <source>the report has more than %1 pages, with %2 nodes, %3 networks and %4 windows: take larger paper, or a configuration of each part</source>
        <translation>der Bericht hat mehr als %1 Seiten, mit %2 Knoten, %3 Netzwerken und %4 Fenstern: größeres Papier wählen oder je Teil eine Konfiguration</translation>
    </message>
    <message>
        <source>the report has %1 projections and tiles, of at most %2: take a configuration of each part</source>
        <translation>der Bericht hat %1 Projektionen und Kacheln, erlaubt sind %2: je Teil eine Konfiguration</translation>
    </message>
</context>
<context>
    <name>zoHPCReportElevation</name>
    <message>
        <source>node (%1)</source>
        <translation>Knoten (%1)</translation>
    </message>
    <message>
        <source>row %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
    <message>
        <source>%1 pixels</source>
        <translation>%1 Pixel</translation>
    </message>
    <message>
        <source>%1 x %2 tiles</source>
        <translation>%1 x %2 Kacheln</translation>
    </message>
    <message>
        <source>each %1</source>
        <translation>je %1</translation>
    </message>
    <message>
        <source>overlap %1</source>
        <translation>Überlappung %1</translation>
    </message>
    <message>
        <source>, blended</source>
        <translation>, überblendet</translation>
    </message>
    <message>
        <source>lower edge at y = %1 mm</source>
        <translation>Unterkante bei y = %1 mm</translation>
    </message>
    <message>
        <source>shown as a whole by %1</source>
        <translation>als Ganzes gezeigt von %1</translation>
    </message>
    <message>
        <source>not to scale</source>
        <translation>nicht maßstäblich</translation>
    </message>
    <message>
        <source>%1: rows %2 to %3 of %4, columns %5 to %6 of %7</source>
        <translation>%1: Zeilen %2 bis %3 von %4, Spalten %5 bis %6 von %7</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>node (%1): %2</source>
        <translation>Knoten (%1): %2</translation>
    </message>
    <message>
        <source>unrolled, %1 degrees from column to column</source>
        <translation>abgewickelt, %1 Grad von Spalte zu Spalte</translation>
    </message>
    <message>
        <source>%1 from picture to picture</source>
        <translation>%1 von Bild zu Bild</translation>
    </message>
</context>
<context>
    <name>zoHPCReportFacts</name>
    <message>
        <source>no node</source>
        <translation>kein Knoten</translation>
    </message>
    <message>
        <source>unknown screen</source>
        <translation>unbekannter Bildschirm</translation>
    </message>
    <message>
        <source>extended desktop</source>
        <translation>erweiterter Desktop</translation>
    </message>
    <message>
        <source>primary screen</source>
        <translation>Hauptbildschirm</translation>
    </message>
    <message>
        <source>screen %1</source>
        <translation>Bildschirm %1</translation>
    </message>
    <message>
        <source>full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>at %1, %2</source>
        <translation>bei %1, %2</translation>
    </message>
    <message>
        <source>window %1 of display %2</source>
        <translation>Fenster %1 von Anzeige %2</translation>
    </message>
    <message>
        <source>left eye</source>
        <translation>linkes Auge</translation>
    </message>
    <message>
        <source>right eye</source>
        <translation>rechtes Auge</translation>
    </message>
    <message>
        <source>not lit</source>
        <translation>nicht beleuchtet</translation>
    </message>
    <message>
        <source>from %1, %2 of the window</source>
        <translation>ab %1, %2 des Fensters</translation>
    </message>
    <message>
        <source>mirrored</source>
        <translation>gespiegelt</translation>
    </message>
    <message>
        <source>upside down</source>
        <translation>kopfstehend</translation>
    </message>
    <message>
        <source>right eye moved by %1, %2</source>
        <translation>rechtes Auge verschoben um %1, %2</translation>
    </message>
    <message>
        <source>%1 %2 px, %3 mm</source>
        <translation>%1 %2 px, %3 mm</translation>
    </message>
    <message>
        <source>%1 %2 px</source>
        <translation>%1 %2 px</translation>
    </message>
    <message>
        <source>left</source>
        <translation>links</translation>
    </message>
    <message>
        <source>right</source>
        <translation>rechts</translation>
    </message>
    <message>
        <source>top</source>
        <translation>oben</translation>
    </message>
    <message>
        <source>bottom</source>
        <translation>unten</translation>
    </message>
</context>
<context>
    <name>zoHPCReportSheets</name>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>zoHPCRoomPicture</name>
    <message>
        <source>No projections</source>
        <translation>Keine Projektionen</translation>
    </message>
    <message>
        <source>Viewer</source>
        <translation>Betrachter</translation>
    </message>
    <message>
        <source>%1 (no area)</source>
        <translation>%1 (ohne Fläche)</translation>
    </message>
    <message>
        <source>%1 (mirrored)</source>
        <translation>%1 (gespiegelt)</translation>
    </message>
    <message>
        <source>%1 (skewed)</source>
        <translation>%1 (schiefwinklig)</translation>
    </message>
    <message>
        <source>r%1 c%2</source>
        <translation>Z%1 S%2</translation>
    </message>
    <message>
        <source>Grid %1</source>
        <translation>Raster %1</translation>
    </message>
    <message>
        <source>Edge blending</source>
        <translation>Randüberblendung</translation>
    </message>
    <message>
        <source>Overlap</source>
        <translation>Überlappung</translation>
    </message>
    <message>
        <source>Shown nowhere</source>
        <translation>Nirgends gezeigt</translation>
    </message>
    <message>
        <source>Faces away from the viewer</source>
        <translation>Vom Betrachter abgewandt</translation>
    </message>
    <message>
        <source>Tiled walls: 1 pixel drawn as 1 mm</source>
        <translation>Kachelwände: 1 Pixel als 1 mm gezeichnet</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 px</source>
        <translation>%1 px</translation>
    </message>
    <message>
        <source>%1 = %2</source>
        <translation>%1 = %2</translation>
    </message>
    <message>
        <source>%1 by %2</source>
        <translation>%1 mal %2</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Monitor</source>
        <translation>Bildschirm</translation>
    </message>
</context>
<context>
    <name>zoHPCRoomView</name>
    <message>
        <source>Room</source>
        <translation>Raum</translation>
    </message>
    <message>
        <source>The projections in space around the viewer</source>
        <translation>Die Projektionen im Raum um den Betrachter</translation>
    </message>
    <message>
        <source>Node: %1</source>
        <translation>Knoten: %1</translation>
    </message>
    <message>
        <source>A click lets the viewport show it, Ctrl+click selects it.</source>
        <translation>Ein Klick lässt den Viewport sie zeigen, Strg+Klick wählt sie aus.</translation>
    </message>
</context>
<context>
    <name>zoHPCScreensPicture</name>
    <message>
        <source>No windows</source>
        <translation>Keine Fenster</translation>
    </message>
    <message>
        <source>Extended desktop</source>
        <translation>Erweiterter Desktop</translation>
    </message>
    <message>
        <source>Primary screen</source>
        <translation>Hauptbildschirm</translation>
    </message>
    <message>
        <source>Screen %1</source>
        <translation>Bildschirm %1</translation>
    </message>
    <message>
        <source>Window %1 of display %2</source>
        <translation>Fenster %1 von Anzeige %2</translation>
    </message>
    <message>
        <source>Window %1</source>
        <translation>Fenster %1</translation>
    </message>
    <message>
        <source>No render node</source>
        <translation>Kein Renderknoten</translation>
    </message>
    <message>
        <source>%1 (not in the cluster)</source>
        <translation>%1 (nicht im Cluster)</translation>
    </message>
    <message>
        <source>%1 (disabled)</source>
        <translation>%1 (deaktiviert)</translation>
    </message>
    <message>
        <source>%1, full screen</source>
        <translation>%1, Vollbild</translation>
    </message>
    <message>
        <source>%1, %2 at %3, %4</source>
        <translation>%1, %2 bei %3, %4</translation>
    </message>
    <message>
        <source>%1, partly off the screen</source>
        <translation>%1, teils außerhalb des Bildschirms</translation>
    </message>
    <message>
        <source>%1, overlaps</source>
        <translation>%1, überlappt</translation>
    </message>
    <message>
        <source>No projection</source>
        <translation>Keine Projektion</translation>
    </message>
    <message>
        <source>flipped</source>
        <translation>gespiegelt</translation>
    </message>
    <message>
        <source>%1, flipped</source>
        <translation>%1, gespiegelt</translation>
    </message>
</context>
<context>
    <name>zoHPCScreensView</name>
    <message>
        <source>Screens</source>
        <translation>Bildschirme</translation>
    </message>
    <message>
        <source>The windows on the screens of each render node</source>
        <translation>Die Fenster auf den Bildschirmen jedes Renderknotens</translation>
    </message>
    <message>
        <source>Drag it, or one of its edges. Ctrl: free of the edges beside it.</source>
        <translation>Mit der Maus verschieben oder an einem Rand ziehen. Strg: ohne an Nachbarn einzurasten.</translation>
    </message>
    <message>
        <source>%1 by %2 at %3, %4</source>
        <translation>%1 mal %2 bei %3, %4</translation>
    </message>
</context>
<context>
    <name>zoHPCSeveralPanel</name>
    <message>
        <source>Duplicate to next nodes</source>
        <translation>Auf nächste Knoten duplizieren</translation>
    </message>
    <message>
        <source>Copies the windows to the nodes that follow theirs; each shows the tile that follows (Ctrl+D)</source>
        <translation>Kopiert die Fenster auf die Knoten, die auf ihre folgen; jedes zeigt die nächste Kachel (Strg+D)</translation>
    </message>
    <message>
        <source>All selected windows</source>
        <translation>Alle ausgewählten Fenster</translation>
    </message>
    <message>
        <source>The first window gets this node, the others those that follow it; windows of one node stay together</source>
        <translation>Das erste Fenster bekommt diesen Knoten, die anderen die folgenden; Fenster eines Knotens bleiben zusammen</translation>
    </message>
    <message>
        <source>Nodes from</source>
        <translation>Knoten ab</translation>
    </message>
    <message>
        <source>Left edges [pixel]</source>
        <translation>Linke Kanten [Pixel]</translation>
    </message>
    <message>
        <source>Top edges [pixel]</source>
        <translation>Obere Kanten [Pixel]</translation>
    </message>
    <message>
        <source>Widths [pixel]</source>
        <translation>Breiten [Pixel]</translation>
    </message>
    <message>
        <source>Heights [pixel]</source>
        <translation>Höhen [Pixel]</translation>
    </message>
    <message>
        <source>All their viewports</source>
        <translation>Alle ihre Viewports</translation>
    </message>
    <message>
        <source>Pixels, also as a sum: 5520/3</source>
        <translation>Pixel, auch als Summe: 5520/3</translation>
    </message>
    <message>
        <source>different</source>
        <translation>verschieden</translation>
    </message>
    <message>
        <source>%1 windows, %2 viewports. What is set here is set for all of them.</source>
        <translation>%1 Fenster, %2 Viewports. Was hier gesetzt wird, gilt für alle.</translation>
    </message>
</context>
<context>
    <name>zoHPCStatusPane</name>
    <message>
        <source>Not saved</source>
        <translation>Nicht gespeichert</translation>
    </message>
    <message>
        <source>This configuration is in no file yet</source>
        <translation>Diese Konfiguration steht noch in keiner Datei</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>The configuration holds changes that were not saved</source>
        <translation>Die Konfiguration enthält Änderungen, die nicht gespeichert sind</translation>
    </message>
    <message>
        <source>1 node</source>
        <translation>1 Knoten</translation>
    </message>
    <message>
        <source>%1 nodes</source>
        <translation>%1 Knoten</translation>
    </message>
    <message>
        <source>Compute nodes of the cluster</source>
        <translation>Rechenknoten des Clusters</translation>
    </message>
    <message>
        <source>1 display</source>
        <translation>1 Anzeige</translation>
    </message>
    <message>
        <source>%1 displays</source>
        <translation>%1 Anzeigen</translation>
    </message>
    <message>
        <source>Displays of the display setup</source>
        <translation>Eingerichtete Anzeigen</translation>
    </message>
    <message>
        <source>No problems</source>
        <translation>Keine Probleme</translation>
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
        <source>Every window would show its part of the scene, as far as can be told from here</source>
        <translation>Soweit von hier aus zu erkennen, würde jedes Fenster seinen Teil der Szene zeigen</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Click to see them in the display setup, where they can be fixed.</source>
        <translation>Ein Klick zeigt sie unter „Anzeigen einrichten“, wo sie sich beheben lassen.</translation>
    </message>
</context>
<context>
    <name>zoHPCStepName</name>
    <message>
        <source>Convert %1 to planes</source>
        <translation>%1 in Ebenen umwandeln</translation>
    </message>
    <message>
        <source>Change configuration</source>
        <translation>Konfiguration ändern</translation>
    </message>
    <message>
        <source>Change cluster computers</source>
        <translation>Clusterrechner ändern</translation>
    </message>
    <message>
        <source>Add %1</source>
        <translation>%1 hinzufügen</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>Change %1</source>
        <translation>%1 ändern</translation>
    </message>
    <message>
        <source>Change &quot;%1&quot; of %2</source>
        <translation>„%1“ ändern: %2</translation>
    </message>
    <message>
        <source>projection %1</source>
        <translation>Projektion %1</translation>
    </message>
    <message>
        <source>display %1</source>
        <translation>Anzeige %1</translation>
    </message>
    <message>
        <source>network %1</source>
        <translation>Netzwerk %1</translation>
    </message>
    <message>
        <source>window %1</source>
        <translation>Fenster %1</translation>
    </message>
    <message>
        <source>compute node %1</source>
        <translation>Rechenknoten %1</translation>
    </message>
    <message>
        <source>viewport %1</source>
        <translation>Viewport %1</translation>
    </message>
    <message>
        <source>options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>%1 projections</source>
        <translation>%1 Projektionen</translation>
    </message>
    <message>
        <source>%1 displays</source>
        <translation>%1 Anzeigen</translation>
    </message>
    <message>
        <source>%1 networks</source>
        <translation>%1 Netzwerke</translation>
    </message>
    <message>
        <source>%1 windows</source>
        <translation>%1 Fenster</translation>
    </message>
    <message>
        <source>%1 compute nodes</source>
        <translation>%1 Rechenknoten</translation>
    </message>
    <message>
        <source>%1 viewports</source>
        <translation>%1 Viewports</translation>
    </message>
    <message>
        <source>Move %1</source>
        <translation>%1 verschieben</translation>
    </message>
    <message>
        <source>Move compute nodes</source>
        <translation>Rechenknoten verschieben</translation>
    </message>
</context>
<context>
    <name>zoHPCSurveyFreedoms</name>
    <message>
        <source>The measurements do not determine the room: %1 more are needed</source>
        <translation>Die Messungen bestimmen den Raum nicht: %1 weitere sind nötig</translation>
    </message>
    <message>
        <source>How the room is tilted is not determined: add a line such as &quot;upright %1&quot;</source>
        <translation>Wie der Raum geneigt ist, ist nicht bestimmt: Fügen Sie eine Zeile wie „upright %1“ hinzu</translation>
    </message>
    <message>
        <source>How high the room is above the floor is not determined: add a line such as &quot;floor %1.bottom 800&quot;</source>
        <translation>Wie hoch der Raum über dem Boden ist, ist nicht bestimmt: Fügen Sie eine Zeile wie „floor %1.bottom 800“ hinzu</translation>
    </message>
    <message>
        <source>where it is</source>
        <translation>wo sie ist</translation>
    </message>
    <message>
        <source>which way it faces</source>
        <translation>wohin sie zeigt</translation>
    </message>
    <message>
        <source>its width</source>
        <translation>ihre Breite</translation>
    </message>
    <message>
        <source>its height</source>
        <translation>ihre Höhe</translation>
    </message>
    <message>
        <source>Wall &quot;%1&quot;: %2 is not determined; one more measurement is needed, such as &quot;%3&quot;</source>
        <translation>Wand „%1“: %2 ist nicht bestimmt; eine weitere Messung ist nötig, etwa „%3“</translation>
    </message>
    <message>
        <source>Wall &quot;%1&quot;: %2 is not determined; %3 more measurements are needed, such as &quot;%4&quot;</source>
        <translation>Wand „%1“: %2 ist nicht bestimmt; %3 weitere Messungen sind nötig, etwa „%4“</translation>
    </message>
    <message>
        <source>Where the viewer is is not determined: add a line such as &quot;viewer distance 2500 height 1700&quot;</source>
        <translation>Wo der Betrachter ist, ist nicht bestimmt: Fügen Sie eine Zeile wie „viewer distance 2500 height 1700“ hinzu</translation>
    </message>
    <message>
        <source>Where the point &quot;%1&quot; is is not determined: add a line such as &quot;distance %1 %2.ll 3200&quot;</source>
        <translation>Wo der Punkt „%1“ ist, ist nicht bestimmt: Fügen Sie eine Zeile wie „distance %1 %2.ll 3200“ hinzu</translation>
    </message>
</context>
<context>
    <name>zoHPCSurveyLine</name>
    <message>
        <source>a control character; the file is no text</source>
        <translation>ein Steuerzeichen; die Datei ist kein Text</translation>
    </message>
    <message>
        <source>the quotation mark is not closed</source>
        <translation>das Anführungszeichen ist nicht geschlossen</translation>
    </message>
    <message>
        <source>%1 is missing</source>
        <translation>%1 fehlt</translation>
    </message>
    <message>
        <source>%1 of more than %2 characters</source>
        <translation>%1 hat mehr als %2 Zeichen</translation>
    </message>
    <message>
        <source>a length is missing, such as 3200, 3.2 m or 12 in</source>
        <translation>eine Länge fehlt, etwa 3200, 3.2 m oder 12 in</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no length; one is 3200, 3.2 m or 12 in</source>
        <translation>„%1“ ist keine Länge; eine ist 3200, 3.2 m oder 12 in</translation>
    </message>
    <message>
        <source>a length of more than %1 m</source>
        <translation>eine Länge von mehr als %1 m</translation>
    </message>
    <message>
        <source>an angle in degrees is missing</source>
        <translation>ein Winkel in Grad fehlt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no angle from 0 to 360 degrees</source>
        <translation>„%1“ ist kein Winkel von 0 bis 360 Grad</translation>
    </message>
    <message>
        <source>numbers of columns and rows from 1 to 1000 are missing, such as 3x2</source>
        <translation>Zahlen der Spalten und Zeilen von 1 bis 1000 fehlen, etwa 3x2</translation>
    </message>
    <message>
        <source>a tolerance is between 0.0001 and 90 degrees</source>
        <translation>eine Toleranz liegt zwischen 0.0001 und 90 Grad</translation>
    </message>
    <message>
        <source>a tolerance is between 0.0001 and 10000 mm</source>
        <translation>eine Toleranz liegt zwischen 0.0001 und 10000 mm</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not expected here</source>
        <translation>„%1“ wird hier nicht erwartet</translation>
    </message>
    <message>
        <source>&quot;%1&quot; may be %2 or %3: write the one that is meant</source>
        <translation>„%1“ kann %2 oder %3 sein: Schreiben Sie, was gemeint ist</translation>
    </message>
    <message>
        <source>character %1 is U+%2, which no name can have</source>
        <translation>Zeichen %1 ist U+%2, das kein Name haben kann</translation>
    </message>
</context>
<context>
    <name>zoHPCSurveyPlanes</name>
    <message>
        <source>&quot;%1&quot; is a part of the projection &quot;%2&quot;, which stays because of &quot;%3&quot;: measure that, too, or rename the wall</source>
        <translation>„%1“ ist ein Teil der Projektion „%2“, die wegen „%3“ bleibt: Messen Sie auch das, oder benennen Sie die Wand um</translation>
    </message>
    <message>
        <source>what showed &quot;%1&quot; shows nothing now</source>
        <translation>was „%1“ zeigte, zeigt nun nichts</translation>
    </message>
    <message>
        <source>the gaps of &quot;%1&quot; leave nothing for its tiles: it is %2 x %3 mm</source>
        <translation>die Lücken von „%1“ lassen nichts für die Kacheln übrig: Die Wand ist %2 x %3 mm groß</translation>
    </message>
    <message>
        <source>the tiles of &quot;%1&quot; overlap by more than their own size: it is %2 x %3 mm</source>
        <translation>die Kacheln von „%1“ überlappen um mehr als ihre eigene Größe: Die Wand ist %2 x %3 mm groß</translation>
    </message>
</context>
<context>
    <name>zoHPCSurveyPoints</name>
    <message>
        <source>a control character; the file is no text</source>
        <translation>ein Steuerzeichen; die Datei ist kein Text</translation>
    </message>
    <message>
        <source>a name and three coordinates were expected: name,east,north,height</source>
        <translation>ein Name und drei Koordinaten wurden erwartet: Name,Ost,Nord,Höhe</translation>
    </message>
    <message>
        <source>more than %1 points</source>
        <translation>mehr als %1 Punkte</translation>
    </message>
    <message>
        <source>the point&apos;s name is missing or too long</source>
        <translation>der Name des Punkts fehlt oder ist zu lang</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no coordinate</source>
        <translation>„%1“ ist keine Koordinate</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is too large a coordinate</source>
        <translation>„%1“ ist eine zu große Koordinate</translation>
    </message>
    <message>
        <source>%1 cells under %2 titles; where the comma is a decimal mark, separate cells by semicolons</source>
        <translation>%1 Zellen unter %2 Überschriften; wo das Komma Dezimalzeichen ist, trennen Sie die Zellen durch Semikolons</translation>
    </message>
    <message>
        <source>%1 whole numbers; where the comma is a decimal mark, separate cells by semicolons, otherwise name the columns in a first line: name,east,north,height</source>
        <translation>%1 ganze Zahlen; wo das Komma Dezimalzeichen ist, trennen Sie die Zellen durch Semikolons, sonst benennen Sie die Spalten in einer ersten Zeile: name,east,north,height</translation>
    </message>
    <message>
        <source>&quot;%1&quot; may be %2 or %3: write numbers with a point, without separated groups</source>
        <translation>„%1“ kann %2 oder %3 sein: Schreiben Sie Zahlen mit Punkt und ohne getrennte Gruppen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is read as %2; should it be %3, write numbers without separated groups</source>
        <translation>„%1“ wird als %2 gelesen; ist %3 gemeint, schreiben Sie Zahlen ohne getrennte Gruppen</translation>
    </message>
</context>
<context>
    <name>zoHPCSurveyReader</name>
    <message>
        <source>more than %1 MiB of text</source>
        <translation>mehr als %1 MiB Text</translation>
    </message>
    <message>
        <source>no wall; a line such as &quot;wall Front size 3600 x 2000&quot; is missing</source>
        <translation>keine Wand; eine Zeile wie „wall Front size 3600 x 2000“ fehlt</translation>
    </message>
    <message>
        <source>the first word</source>
        <translation>das erste Wort</translation>
    </message>
    <message>
        <source>&quot;%1&quot; begins no line; these do: %2</source>
        <translation>„%1“ beginnt keine Zeile; diese tun es: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; begins no line; did you mean &quot;%2&quot;?</source>
        <translation>„%1“ beginnt keine Zeile; meinten Sie „%2“?</translation>
    </message>
    <message>
        <source>more than %1 measurements</source>
        <translation>mehr als %1 Messungen</translation>
    </message>
    <message>
        <source>the unit</source>
        <translation>die Einheit</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no unit of length: %2</source>
        <translation>„%1“ ist keine Längeneinheit: %2</translation>
    </message>
    <message>
        <source>a tolerance is more than 0</source>
        <translation>eine Toleranz ist größer als 0</translation>
    </message>
    <message>
        <source>the name of the wall</source>
        <translation>der Name der Wand</translation>
    </message>
    <message>
        <source>there is a &quot;%1&quot; already</source>
        <translation>„%1“ gibt es schon</translation>
    </message>
    <message>
        <source>more than %1 walls</source>
        <translation>mehr als %1 Wände</translation>
    </message>
    <message>
        <source>a wall is 1 mm wide and high at least</source>
        <translation>eine Wand ist mindestens 1 mm breit und hoch</translation>
    </message>
    <message>
        <source>more than %1 tiles</source>
        <translation>mehr als %1 Kacheln</translation>
    </message>
    <message>
        <source>the gaps leave nothing for the tiles</source>
        <translation>die Lücken lassen nichts für die Kacheln übrig</translation>
    </message>
    <message>
        <source>there is a line &quot;viewer&quot; already</source>
        <translation>eine Zeile „viewer“ gibt es schon</translation>
    </message>
    <message>
        <source>a distance is more than 0; places that coincide are told with &quot;join&quot;</source>
        <translation>ein Abstand ist größer als 0; Stellen, die zusammenfallen, sagt „join“</translation>
    </message>
    <message>
        <source>a distance is between two places</source>
        <translation>ein Abstand liegt zwischen zwei Stellen</translation>
    </message>
    <message>
        <source>an angle is between two walls</source>
        <translation>ein Winkel liegt zwischen zwei Wänden</translation>
    </message>
    <message>
        <source>a wall and a point cannot be joined with themselves</source>
        <translation>eine Wand oder ein Punkt lässt sich nicht mit sich selbst verbinden</translation>
    </message>
    <message>
        <source>an edge is joined with an edge, a corner with a corner</source>
        <translation>eine Kante wird mit einer Kante verbunden, eine Ecke mit einer Ecke</translation>
    </message>
    <message>
        <source>the name of the point</source>
        <translation>der Name des Punkts</translation>
    </message>
    <message>
        <source>more than %1 points</source>
        <translation>mehr als %1 Punkte</translation>
    </message>
    <message>
        <source>the name of the file</source>
        <translation>der Name der Datei</translation>
    </message>
    <message>
        <source>units of length are %1</source>
        <translation>Längeneinheiten sind %1</translation>
    </message>
    <message>
        <source>the axis y or z</source>
        <translation>die Achse y oder z</translation>
    </message>
    <message>
        <source>the axis that points up is y or z</source>
        <translation>die Achse nach oben ist y oder z</translation>
    </message>
    <message>
        <source>the point list %1 cannot be read: %2</source>
        <translation>die Punktliste %1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>the corner</source>
        <translation>die Ecke</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is marked already</source>
        <translation>„%1“ ist schon markiert</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is marked itself; name the corner</source>
        <translation>„%1“ ist selbst markiert; nennen Sie die Ecke</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is in no point list</source>
        <translation>„%1“ steht in keiner Punktliste</translation>
    </message>
    <message>
        <source>there is no wall &quot;%1&quot;</source>
        <translation>es gibt keine Wand „%1“</translation>
    </message>
    <message>
        <source>there is no wall &quot;%1&quot;; did you mean &quot;%2&quot;?</source>
        <translation>es gibt keine Wand „%1“; meinten Sie „%2“?</translation>
    </message>
    <message>
        <source>a place such as Front.ll</source>
        <translation>eine Stelle wie Front.ll</translation>
    </message>
    <message>
        <source>where on &quot;%1&quot;? Places are %1.ll, .lr, .ul, .ur, .center, .left, .right, .top and .bottom</source>
        <translation>wo auf „%1“? Stellen sind %1.ll, .lr, .ul, .ur, .center, .left, .right, .top und .bottom</translation>
    </message>
    <message>
        <source>there is no place &quot;%1&quot;</source>
        <translation>es gibt keine Stelle „%1“</translation>
    </message>
    <message>
        <source>there is no place &quot;%1&quot;; did you mean &quot;%2&quot;?</source>
        <translation>es gibt keine Stelle „%1“; meinten Sie „%2“?</translation>
    </message>
    <message>
        <source>more than %1 point lists</source>
        <translation>mehr als %1 Punktlisten</translation>
    </message>
    <message>
        <source>tiles overlap by more than their own size; a gap below 0 is what they share</source>
        <translation>die Kacheln überlappen um mehr als ihre eigene Größe; eine Lücke unter 0 ist, was sie gemeinsam haben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is also the name of a tile of &quot;%2&quot; in line %3: give the wall another name</source>
        <translation>„%1“ heißt auch eine Kachel von „%2“ in Zeile %3: Geben Sie der Wand einen anderen Namen</translation>
    </message>
</context>
<context>
    <name>zoHPCTextCheck</name>
    <message>
        <source>No configuration has an element &quot;%1&quot;.</source>
        <translation>Keine Konfiguration hat ein Element „%1“.</translation>
    </message>
    <message>
        <source>No configuration has an element &quot;%1&quot;: did you mean &quot;%2&quot;?</source>
        <translation>Keine Konfiguration hat ein Element „%1“: ist „%2“ gemeint?</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no root element.</source>
        <translation>„%1“ ist kein Wurzelelement.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no place in &quot;%2&quot;: it belongs in %3.</source>
        <translation>„%1“ hat in „%2“ keinen Platz: es gehört in %3.</translation>
    </message>
    <message>
        <source>no element</source>
        <translation>kein Element</translation>
    </message>
    <message>
        <source>&quot; or &quot;</source>
        <translation>&quot; oder &quot;</translation>
    </message>
    <message>
        <source>There is a second &quot;%1&quot;.</source>
        <translation>Es gibt ein zweites „%1“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has the attribute &quot;%2&quot; twice: the last one counts.</source>
        <translation>„%1“ hat das Attribut „%2“ zweimal: das letzte gilt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no attribute &quot;%2&quot;.</source>
        <translation>„%1“ hat kein Attribut „%2“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no attribute &quot;%2&quot;: did you mean &quot;%3&quot;?</source>
        <translation>„%1“ hat kein Attribut „%2“: ist „%3“ gemeint?</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no attribute &quot;%2&quot;; &quot;%3&quot; has it.</source>
        <translation>„%1“ hat kein Attribut „%2“; „%3“ hat es.</translation>
    </message>
    <message>
        <source>The configuration is of version %1, this program reads up to version %2.</source>
        <translation>Die Konfiguration ist von Version %1, dieses Programm liest bis Version %2.</translation>
    </message>
    <message>
        <source>%1: it is at least %2.</source>
        <translation>%1: mindestens %2.</translation>
    </message>
    <message>
        <source>%1: it is from %2 to %3.</source>
        <translation>%1: von %2 bis %3.</translation>
    </message>
    <message>
        <source>%1: did you mean &quot;%2&quot;?</source>
        <translation>%1: ist „%2“ gemeint?</translation>
    </message>
    <message>
        <source>%1 is no whole number.</source>
        <translation>%1 ist keine ganze Zahl.</translation>
    </message>
    <message>
        <source>%1 is no number.</source>
        <translation>%1 ist keine Zahl.</translation>
    </message>
    <message>
        <source>%1: it is one of %2.</source>
        <translation>%1: eines von %2.</translation>
    </message>
    <message>
        <source>Nobody reads the text &quot;%1&quot;.</source>
        <translation>Den Text „%1“ liest niemand.</translation>
    </message>
</context>
<context>
    <name>zoHPCTextLog</name>
    <message>
        <source>%1: and %2 more, which &quot;zohpc check&quot; tells.</source>
        <translation>%1: und %2 weitere, die „zohpc check“ nennt.</translation>
    </message>
    <message>
        <source>%1, line %2, column %3: %4</source>
        <translation>%1, Zeile %2, Spalte %3: %4</translation>
    </message>
</context>
<context>
    <name>zoHPCTreeEditGUIW</name>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Data compression</source>
        <translation>Datenkompression</translation>
    </message>
    <message>
        <source>Compression of the scene data that is sent to the compute nodes</source>
        <translation>Kompression der Szenendaten, die an die Rechenknoten gesendet werden</translation>
    </message>
    <message>
        <source>Image compression</source>
        <translation>Bildkompression</translation>
    </message>
    <message>
        <source>Compression of the images that the compute nodes send back</source>
        <translation>Kompression der Bilder, die die Rechenknoten zurücksenden</translation>
    </message>
    <message>
        <source>Start/Stop action</source>
        <translation>Start-/Stopp-Aktion</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;The selected aciton will be performed on cluster start and reverted on cluster stop&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Die gewählte Aktion wird beim Starten des Clusters ausgeführt und beim Stoppen rückgängig gemacht&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Still supersampling</source>
        <translation>Standbild-Supersampling</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;During still antialiasing the image can be rendered in a higher resolution. This can eventually reduce the noice but will increase network traffic. &lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Während der Kantenglättung im Stillstand kann das Bild in höherer Auflösung gerendert werden. Das kann das Rauschen verringern, erhöht aber die Netzwerklast. &lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>Erweitert</translation>
    </message>
    <message>
        <source>Parallel frames</source>
        <translation>Parallele Bilder</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Multiple frames are rendered in parallel by a different group of compute nodes. This can be used to get a better cluster scalability with a large number of compute nodes.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Mehrere Bilder werden gleichzeitig von verschiedenen Gruppen von Rechenknoten gerendert. Damit skaliert der Cluster bei vielen Rechenknoten besser.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Frame buffers</source>
        <translation>Bildpuffer</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;On slow network connections the framerate can be improved by using multiple rendering buffers.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Bei langsamen Netzwerkverbindungen lässt sich die Bildrate mit mehreren Renderpuffern verbessern.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;All nodes of a homogeneous cluster have the same performance&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Alle Knoten eines homogenen Clusters sind gleich leistungsfähig&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Homogeneous cluster</source>
        <translation>Homogener Cluster</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Use the compute nodes of this network</source>
        <translation>Die Rechenknoten dieses Netzwerks verwenden</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Aktiviert</translation>
    </message>
    <message>
        <source>Network type</source>
        <translation>Netzwerktyp</translation>
    </message>
    <message>
        <source>Kind of the network that connects the compute nodes</source>
        <translation>Art des Netzwerks, das die Rechenknoten verbindet</translation>
    </message>
    <message>
        <source>Network speed</source>
        <translation>Netzwerkgeschwindigkeit</translation>
    </message>
    <message>
        <source>Bandwidth of the network</source>
        <translation>Bandbreite des Netzwerks</translation>
    </message>
    <message>
        <source>Service port</source>
        <translation>Dienstport</translation>
    </message>
    <message>
        <source>Port on which the cluster servers of this network listen</source>
        <translation>Port, an dem die Clusterserver dieses Netzwerks lauschen</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Shown behind the network in the tree</source>
        <translation>Steht im Baum hinter dem Netzwerk</translation>
    </message>
    <message>
        <source>Encrypt the connections to the compute nodes of this network</source>
        <translation>Die Verbindungen zu den Rechenknoten dieses Netzwerks verschlüsseln</translation>
    </message>
    <message>
        <source>Encrypted</source>
        <translation>Verschlüsselt</translation>
    </message>
    <message>
        <source>Compute node</source>
        <translation>Rechenknoten</translation>
    </message>
    <message>
        <source>Use this node</source>
        <translation>Diesen Knoten verwenden</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Enter host name or ip address</source>
        <translation>Rechnername oder IP-Adresse eingeben</translation>
    </message>
    <message>
        <source>Use this node in raytracing mode</source>
        <translation>Diesen Knoten im Raytracing-Modus verwenden</translation>
    </message>
    <message>
        <source>Use for Raytracing</source>
        <translation>Für Raytracing verwenden</translation>
    </message>
    <message>
        <source>Ethernet</source>
        <translation>Ethernet</translation>
    </message>
    <message>
        <source>Infiniband</source>
        <translation>Infiniband</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Internet</source>
        <translation>Internet</translation>
    </message>
    <message>
        <source>1 Gigabit</source>
        <translation>1 Gigabit</translation>
    </message>
    <message>
        <source>10 Gigabit</source>
        <translation>10 Gigabit</translation>
    </message>
    <message>
        <source>10G uplink to 1G</source>
        <translation>10G-Uplink zu 1G</translation>
    </message>
    <message>
        <source>40 Gigabit</source>
        <translation>40 Gigabit</translation>
    </message>
    <message>
        <source>40G uplink to 10G</source>
        <translation>40G-Uplink zu 10G</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Hoch</translation>
    </message>
    <message>
        <source>Low (Lossless)</source>
        <translation>Niedrig (verlustfrei)</translation>
    </message>
    <message>
        <source>Medium (Lossy)</source>
        <translation>Mittel (verlustbehaftet)</translation>
    </message>
    <message>
        <source>High (Lossy)</source>
        <translation>Hoch (verlustbehaftet)</translation>
    </message>
    <message>
        <source>Do nothing</source>
        <translation>Nichts tun</translation>
    </message>
    <message>
        <source>Downscale Off / On</source>
        <translation>Herunterskalieren aus / ein</translation>
    </message>
    <message>
        <source>Raytracing On / Off</source>
        <translation>Raytracing ein / aus</translation>
    </message>
    <message>
        <source>Rendering On / Off</source>
        <translation>Rendering ein / aus</translation>
    </message>
    <message>
        <source>2x2</source>
        <translation>2x2</translation>
    </message>
    <message>
        <source>3x3</source>
        <translation>3x3</translation>
    </message>
    <message>
        <source>4x4</source>
        <translation>4x4</translation>
    </message>
    <message>
        <source>1</source>
        <translation>1</translation>
    </message>
    <message>
        <source>2</source>
        <translation>2</translation>
    </message>
    <message>
        <source>3</source>
        <translation>3</translation>
    </message>
    <message>
        <source>4</source>
        <translation>4</translation>
    </message>
    <message>
        <source>5</source>
        <translation>5</translation>
    </message>
    <message>
        <source>6</source>
        <translation>6</translation>
    </message>
    <message>
        <source>7</source>
        <translation>7</translation>
    </message>
    <message>
        <source>8</source>
        <translation>8</translation>
    </message>
    <message>
        <source>Option &quot;%1&quot; of %2: the unknown value &quot;%3&quot; is replaced by the default.</source>
        <translation>Option „%1“ (%2): Der unbekannte Wert „%3“ wird durch den Standardwert ersetzt.</translation>
    </message>
    <message>
        <source>the cluster</source>
        <translation>Cluster</translation>
    </message>
    <message>
        <source>Changes apply to all %1 selected compute nodes; the name is that of %2 alone.</source>
        <translation>Änderungen gelten für alle %1 ausgewählten Rechenknoten; der Name ist der von %2 allein.</translation>
    </message>
    <message>
        <source>Changes apply to all %1 selected networks; the description is that of this one alone.</source>
        <translation>Änderungen gelten für alle %1 ausgewählten Netzwerke; die Beschreibung ist die von diesem allein.</translation>
    </message>
</context>
<context>
    <name>zoHPCTreeFilter</name>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Shows only rows in which all of these words are found (Ctrl+F)</source>
        <translation>Zeigt nur Zeilen, in denen alle diese Wörter vorkommen (Strg+F)</translation>
    </message>
</context>
<context>
    <name>zoHPCTreeGUIW</name>
    <message>
        <source>Cluster</source>
        <translation>Cluster</translation>
    </message>
    <message>
        <source>Cluster config...</source>
        <translation>Clusterkonfiguration...</translation>
    </message>
    <message>
        <source>Add network</source>
        <translation>Netzwerk hinzufügen</translation>
    </message>
    <message>
        <source>Add compute node</source>
        <translation>Rechenknoten hinzufügen</translation>
    </message>
    <message>
        <source>Remove network</source>
        <translation>Netzwerk entfernen</translation>
    </message>
    <message>
        <source>Remove compute node</source>
        <translation>Rechenknoten entfernen</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>The hosts text names more than %1 hosts.</source>
        <translation>Der Text der Rechner nennt mehr als %1 Rechner.</translation>
    </message>
    <message>
        <source>Unable to read hosts file %1: %2</source>
        <translation>Rechnerdatei %1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>it is no text in UTF-8</source>
        <translation>sie ist kein Text in UTF-8</translation>
    </message>
    <message>
        <source>The cluster section is nested too deep: the tree has at most %1 levels. Put networks beside each other, not into each other.</source>
        <translation>Der Clusterteil ist zu tief verschachtelt: Der Baum hat höchstens %1 Ebenen. Bitte Netzwerke nebeneinander statt ineinander stellen.</translation>
    </message>
    <message>
        <source>The hosts text is nested too deep: the tree has at most %1 levels. Put networks beside each other, not into each other.</source>
        <translation>Der Hosttext ist zu tief verschachtelt: Der Baum hat höchstens %1 Ebenen. Bitte Netzwerke nebeneinander statt ineinander stellen.</translation>
    </message>
    <message>
        <source>Filter networks and compute nodes</source>
        <translation>Netzwerke und Rechenknoten filtern</translation>
    </message>
    <message>
        <source>Shows the rows that have each of these words: a part of the name, or one of %1, or an option as speed=10g</source>
        <translation>Zeigt die Zeilen, die jedes dieser Wörter haben: einen Teil des Namens, eines von %1, oder eine Option wie speed=10g</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>deaktiviert</translation>
    </message>
    <message>
        <source>running</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>gateway</source>
        <translation>gateway</translation>
    </message>
    <message>
        <source>encrypted</source>
        <translation>verschlüsselt</translation>
    </message>
    <message>
        <source>not for raytracing</source>
        <translation>nicht für Raytracing</translation>
    </message>
</context>
<context>
    <name>zoHPCUndo</name>
    <message>
        <source>Change display setup</source>
        <translation>Anzeigen einrichten</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>zoHPCViewportItem</name>
    <message>
        <source>Viewport: %1 %2</source>
        <translation>Viewport: %1 %2</translation>
    </message>
</context>
<context>
    <name>zoHPCWallBuilder</name>
    <message>
        <source>&quot;%1&quot; comes twice</source>
        <translation>„%1“ kommt zweimal vor</translation>
    </message>
    <message>
        <source>gateways and nodes that do not render drive no screen, and &quot;%1&quot; has no other</source>
        <translation>Gateways und Knoten, die nicht rendern, steuern keinen Bildschirm, und „%1“ hat keine anderen</translation>
    </message>
    <message>
        <source>no node in &quot;%1&quot;</source>
        <translation>kein Knoten in „%1“</translation>
    </message>
</context>
<context>
    <name>zoHPCWallMistakes</name>
    <message>
        <source>%1 tiles cannot be: 1 to %2 in a row and in a column</source>
        <translation>%1 Kacheln kann es nicht geben: 1 bis %2 je Zeile und Spalte</translation>
    </message>
    <message>
        <source>%1 tiles are more than %2</source>
        <translation>%1 Kacheln sind mehr als %2</translation>
    </message>
    <message>
        <source>%1x%2 pixels cannot be: 1 to %3 each way</source>
        <translation>%1x%2 Pixel kann es nicht geben: 1 bis %3 in jeder Richtung</translation>
    </message>
    <message>
        <source>nothing of the size is left for pictures</source>
        <translation>von der Größe bleibt nichts für Bilder</translation>
    </message>
    <message>
        <source>more than %1 pixels</source>
        <translation>mehr als %1 Pixel</translation>
    </message>
    <message>
        <source>tiles of %1x%2 pixels cannot share %3</source>
        <translation>Kacheln von %1x%2 Pixeln können nicht %3 gemeinsam haben</translation>
    </message>
    <message>
        <source>a pixel is 0.001 to 1000 mm wide</source>
        <translation>ein Pixel ist 0,001 bis 1000 mm breit</translation>
    </message>
    <message>
        <source>how large is a pixel? Millimetres between tiles need it</source>
        <translation>wie groß ist ein Pixel? Millimeter zwischen Kacheln brauchen das</translation>
    </message>
    <message>
        <source>pixels are whole numbers</source>
        <translation>Pixel sind ganze Zahlen</translation>
    </message>
    <message>
        <source>a cave has one wall at least</source>
        <translation>eine Cave hat mindestens eine Wand</translation>
    </message>
    <message>
        <source>the walls of a cave share no pixels</source>
        <translation>die Wände einer Cave haben keine gemeinsamen Pixel</translation>
    </message>
    <message>
        <source>an angle between columns is more than 0 and at most 120 degrees</source>
        <translation>ein Winkel zwischen Spalten ist mehr als 0 und höchstens 120 Grad</translation>
    </message>
    <message>
        <source>tiles of %1 mm do not stand on a circle with a radius of %2 mm</source>
        <translation>Kacheln von %1 mm stehen auf keinem Kreis mit einem Radius von %2 mm</translation>
    </message>
    <message>
        <source>%1 columns with %2 degrees from one to the next do not fit into a circle</source>
        <translation>%1 Spalten mit %2 Grad von einer zur nächsten passen in keinen Kreis</translation>
    </message>
    <message>
        <source>one plane at least</source>
        <translation>mindestens eine Ebene</translation>
    </message>
    <message>
        <source>%1 planes are more than %2</source>
        <translation>%1 Ebenen sind mehr als %2</translation>
    </message>
    <message>
        <source>a place is at most %1 mm away</source>
        <translation>ein Ort ist höchstens %1 mm entfernt</translation>
    </message>
    <message>
        <source>who looks at a wall without a size in millimetres is straight before its middle</source>
        <translation>wer eine Wand ohne Größe in Millimetern ansieht, ist gerade vor ihrer Mitte</translation>
    </message>
    <message>
        <source>column %1 turns its back to the viewer</source>
        <translation>Spalte %1 kehrt dem Betrachter den Rücken zu</translation>
    </message>
    <message>
        <source>too long a name for %1 tiles, which repeat it</source>
        <translation>ein zu langer Name für %1 Kacheln, die ihn wiederholen</translation>
    </message>
    <message>
        <source>a node has 1 to %1 screens</source>
        <translation>ein Knoten hat 1 bis %1 Bildschirme</translation>
    </message>
    <message>
        <source>left</source>
        <translation>links</translation>
    </message>
    <message>
        <source>right</source>
        <translation>rechts</translation>
    </message>
    <message>
        <source>top</source>
        <translation>oben</translation>
    </message>
    <message>
        <source>bottom</source>
        <translation>unten</translation>
    </message>
    <message>
        <source>front</source>
        <translation>vorn</translation>
    </message>
    <message>
        <source>back</source>
        <translation>hinten</translation>
    </message>
    <message>
        <source>a radius is %1 to %2 mm</source>
        <translation>ein Radius ist %1 bis %2 mm groß</translation>
    </message>
    <message>
        <source>so small an angle takes a radius of more than %1 mm</source>
        <translation>ein so kleiner Winkel braucht einen Radius von mehr als %1 mm</translation>
    </message>
    <message>
        <source>planes are turned and tilted by -%1 to %1 degrees</source>
        <translation>Ebenen sind um -%1 bis %1 Grad gedreht und geneigt</translation>
    </message>
    <message>
        <source>the viewer is before the wall: %1 mm away or more</source>
        <translation>der Betrachter steht vor der Wand: %1 mm entfernt oder mehr</translation>
    </message>
    <message>
        <source>the viewer is in the plane of column %1: nearer to the middle he sees it</source>
        <translation>der Betrachter steht in der Ebene von Spalte %1: näher an der Mitte sieht er sie</translation>
    </message>
    <message>
        <source>the viewer is in the plane of the wall &quot;%1&quot;: inside he is less than %2 mm from the middle of the cave toward it</source>
        <translation>der Betrachter ist in der Ebene der Wand „%1“: innen ist er von der Mitte der Cave aus weniger als %2 mm auf sie zu</translation>
    </message>
    <message>
        <source>the viewer is outside the cave, behind its wall &quot;%1&quot;: inside he is less than %2 mm from the middle of the cave toward it</source>
        <translation>der Betrachter ist außerhalb der Cave, hinter ihrer Wand „%1“: innen ist er von der Mitte der Cave aus weniger als %2 mm auf sie zu</translation>
    </message>
    <message>
        <source>the viewer is outside the cave, where it has no wall: inside he is less than %1, %2 and %3 mm from its middle to the side, upward and backward</source>
        <translation>der Betrachter ist außerhalb der Cave, wo sie keine Wand hat: innen ist er von ihrer Mitte weniger als %1, %2 und %3 mm entfernt, zur Seite, nach oben und nach hinten</translation>
    </message>
    <message>
        <source>pictures would be %1 % too wide</source>
        <translation>Bilder würden %1 % zu breit</translation>
    </message>
    <message>
        <source>pictures would be %1 % too high</source>
        <translation>Bilder würden %1 % zu hoch</translation>
    </message>
    <message>
        <source>; is it the size of one tile?</source>
        <translation>; ist es die Größe einer Kachel?</translation>
    </message>
    <message>
        <source>; is it the size of the whole wall?</source>
        <translation>; ist es die Größe der ganzen Wand?</translation>
    </message>
    <message>
        <source>the viewer is in the plane of &quot;%1&quot;, which he sees from its edge: he is before it</source>
        <translation>der Betrachter ist in der Ebene von „%1“ und sieht nur ihre Kante: er steht davor</translation>
    </message>
    <message>
        <source>name of plane %1, %2</source>
        <translation>Name der Ebene %1, %2</translation>
    </message>
    <message>
        <source>character %1 is U+%2, which a document cannot hold</source>
        <translation>Zeichen %1 ist U+%2, das kein Dokument aufnehmen kann</translation>
    </message>
    <message>
        <source>a size is %1 to %2 mm</source>
        <translation>eine Größe ist %1 bis %2 mm</translation>
    </message>
    <message>
        <source>eyes are 0 to %1 mm apart</source>
        <translation>Augen sind 0 bis %1 mm voneinander entfernt</translation>
    </message>
    <message>
        <source>%1 windows are more than %2</source>
        <translation>%1 Fenster sind mehr als %2</translation>
    </message>
</context>
<context>
    <name>zoHPCWallPlan</name>
    <message>
        <source>A window for each eye</source>
        <translation>Ein Fenster je Auge</translation>
    </message>
</context>
<context>
    <name>zoHPCWallWindows</name>
    <message>
        <source>both eyes of a tile on one node take an even number of screens, not %1</source>
        <translation>beide Augen einer Kachel auf einem Knoten brauchen eine gerade Zahl von Bildschirmen, nicht %1</translation>
    </message>
    <message>
        <source>%1 windows, %2 on each node, take %3 nodes: there are %4</source>
        <translation>%1 Fenster, %2 auf jedem Knoten, brauchen %3 Knoten: vorhanden sind %4</translation>
    </message>
    <message>
        <source>a node for each eye takes 2 nodes: there is 1</source>
        <translation>ein Knoten für jedes Auge braucht 2 Knoten: vorhanden ist 1</translation>
    </message>
    <message>
        <source>one node has no window: each eye has as many nodes as the other one</source>
        <translation>ein Knoten hat kein Fenster: jedes Auge hat so viele Knoten wie das andere</translation>
    </message>
    <message>
        <source>%1 windows on the first nodes of each eye, %2 on the others</source>
        <translation>%1 Fenster auf den ersten Knoten jedes Auges, %2 auf den anderen</translation>
    </message>
    <message>
        <source>%1 windows on the first node, %2 on each of the others</source>
        <translation>%1 Fenster auf dem ersten Knoten, %2 auf jedem anderen</translation>
    </message>
    <message>
        <source>%1 windows on each of the first %2 nodes, %3 on the others</source>
        <translation>%1 Fenster auf jedem der ersten %2 Knoten, %3 auf den anderen</translation>
    </message>
    <message>
        <source>%1 screens on each node, %2 at most</source>
        <translation>%1 Bildschirme auf jedem Knoten, höchstens %2</translation>
    </message>
</context>
<context>
    <name>zoHPCWindowItem</name>
    <message>
        <source>Window: %1</source>
        <translation>Fenster: %1</translation>
    </message>
</context>
<context>
    <name>zoHPCWindowNotes</name>
    <message>
        <source>it has none of the elements of a cluster configuration</source>
        <translation>sie hat keines der Elemente einer Cluster-Konfiguration</translation>
    </message>
    <message>
        <source>line %1, column %2: %3</source>
        <translation>Zeile %1, Spalte %2: %3</translation>
    </message>
    <message>
        <source>and %1 more, which &quot;zohpc convert&quot; tells.</source>
        <translation>und %1 weitere, die &quot;zohpc convert&quot; nennt.</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>it is a configuration of the format before: File &gt; &quot;Import legacy...&quot; reads it, &quot;zohpc convert&quot; makes a file of the present format of it</source>
        <translation>es ist eine Konfiguration des früheren Formats: Datei &gt; &quot;Alte Konfiguration importieren...&quot; liest sie, &quot;zohpc convert&quot; macht eine Datei des heutigen Formats daraus</translation>
    </message>
</context>
</TS>
