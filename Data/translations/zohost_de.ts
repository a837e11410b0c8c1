<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>zoClusterDocument</name>
    <message>
        <source>line %1, column %2: %3</source>
        <translation>Zeile %1, Spalte %2: %3</translation>
    </message>
    <message>
        <source>more than %1 elements are nested</source>
        <translation>mehr als %1 Elemente sind verschachtelt</translation>
    </message>
    <message>
        <source>an element has more than %1 attributes</source>
        <translation>ein Element hat mehr als %1 Attribute</translation>
    </message>
    <message>
        <source>the document type declares too much</source>
        <translation>der Dokumenttyp vereinbart zu viel</translation>
    </message>
</context>
<context>
    <name>zoCommandLine</name>
    <message>
        <source>the argument $&apos;%1&apos; is no text in the encoding of the locale (%2); rename the file</source>
        <translation>das Argument $&apos;%1&apos; ist kein Text in der Kodierung der Locale (%2); bitte die Datei umbenennen</translation>
    </message>
</context>
<context>
    <name>zoConfigurationDifference</name>
    <message>
        <source>1 network</source>
        <translation>1 Netzwerk</translation>
    </message>
    <message>
        <source>%1 networks</source>
        <translation>%1 Netzwerke</translation>
    </message>
    <message>
        <source>1 compute node</source>
        <translation>1 Rechenknoten</translation>
    </message>
    <message>
        <source>%1 compute nodes</source>
        <translation>%1 Rechenknoten</translation>
    </message>
    <message>
        <source>1 projection</source>
        <translation>1 Projektion</translation>
    </message>
    <message>
        <source>%1 projections</source>
        <translation>%1 Projektionen</translation>
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
        <source>1 window</source>
        <translation>1 Fenster</translation>
    </message>
    <message>
        <source>%1 windows</source>
        <translation>%1 Fenster</translation>
    </message>
    <message>
        <source>1 viewport</source>
        <translation>1 Viewport</translation>
    </message>
    <message>
        <source>%1 viewports</source>
        <translation>%1 Viewports</translation>
    </message>
    <message>
        <source>%1 more</source>
        <translation>%1 mehr</translation>
    </message>
    <message>
        <source>%1 less</source>
        <translation>%1 weniger</translation>
    </message>
    <message>
        <source>It is empty.</source>
        <translation>Sie ist leer.</translation>
    </message>
    <message>
        <source>It has %1.</source>
        <translation>Sie hat %1.</translation>
    </message>
    <message>
        <source>, </source>
        <translation>, </translation>
    </message>
    <message>
        <source>Its file is not there any more.</source>
        <translation>Ihre Datei ist nicht mehr da.</translation>
    </message>
    <message>
        <source>It is the same as its file.</source>
        <translation>Sie ist gleich ihrer Datei.</translation>
    </message>
    <message>
        <source>It differs from its file in values only.</source>
        <translation>Sie unterscheidet sich von ihrer Datei nur in Werten.</translation>
    </message>
    <message>
        <source>Against its file: %1.</source>
        <translation>Gegenüber ihrer Datei: %1.</translation>
    </message>
</context>
<context>
    <name>zoFileName</name>
    <message>
        <source>the file name is empty</source>
        <translation>der Dateiname ist leer</translation>
    </message>
    <message>
        <source>the encoding of the locale has not all characters of this name; rename the file, or use a locale with UTF-8 (LC_ALL=C.UTF-8)</source>
        <translation>die Kodierung der Locale hat nicht alle Zeichen dieses Namens; die Datei umbenennen oder eine Locale mit UTF-8 verwenden (LC_ALL=C.UTF-8)</translation>
    </message>
    <message>
        <source>bytes of this name are no text in the encoding of the locale; give the file another name</source>
        <translation>Bytes dieses Namens sind kein Text in der Kodierung der Locale; bitte die Datei anders nennen</translation>
    </message>
</context>
<context>
    <name>zoFileReader</name>
    <message>
        <source>it is larger than %1 MiB, the most that is read; is it the right file?</source>
        <translation>sie ist größer als %1 MiB, mehr wird nicht gelesen; ist es die richtige Datei?</translation>
    </message>
    <message>
        <source>standard input is closed</source>
        <translation>die Standardeingabe ist geschlossen</translation>
    </message>
    <message>
        <source>it is no regular file but a device, a pipe or the like; copy what it gives into a file</source>
        <translation>sie ist keine gewöhnliche Datei, sondern ein Gerät, eine Pipe oder dergleichen; bitte den Inhalt in eine Datei kopieren</translation>
    </message>
</context>
<context>
    <name>zoHostAboutDialog</name>
    <message>
        <source>windows, pictures, XML, processes</source>
        <translation>Fenster, Bilder, XML, Prozesse</translation>
    </message>
    <message>
        <source>the system</source>
        <translation>das System</translation>
    </message>
    <message>
        <source>the language&apos;s library</source>
        <translation>die Bibliothek der Sprache</translation>
    </message>
    <message>
        <source>networks on MPI, on their nodes</source>
        <translation>Netzwerke über MPI, auf ihren Knoten</translation>
    </message>
    <message>
        <source>About zohost</source>
        <translation>Über zohost</translation>
    </message>
    <message>
        <source>&lt;h2&gt;zohost %1&lt;/h2&gt;&lt;p&gt;Shows and runs render cluster configurations.&lt;/p&gt;</source>
        <translation>&lt;h2&gt;zohost %1&lt;/h2&gt;&lt;p&gt;Zeigt Konfigurationen von Render-Clustern und lässt sie laufen.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Lizenz</translation>
    </message>
    <message>
        <source>Copy versions</source>
        <translation>Versionen kopieren</translation>
    </message>
    <message>
        <source>For a report of a mistake</source>
        <translation>Für den Bericht eines Fehlers</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Program and modules</source>
        <translation>Programm und Module</translation>
    </message>
    <message>
        <source>not told</source>
        <translation>nicht angegeben</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>For</source>
        <translation>Für</translation>
    </message>
    <message>
        <source>of the nodes</source>
        <translation>die der Knoten</translation>
    </message>
    <message>
        <source>They are libraries of the system and may be replaced by others of their kind. Debian has the texts of their licences in /usr/share/doc and /usr/share/common-licenses.</source>
        <translation>Es sind Bibliotheken des Systems; andere ihrer Art können an ihre Stelle treten. Debian hat die Texte ihrer Lizenzen in /usr/share/doc und /usr/share/common-licenses.</translation>
    </message>
    <message>
        <source>measured rooms, in the modules</source>
        <translation>vermessene Räume, in den Modulen</translation>
    </message>
</context>
<context>
    <name>zoHostApplication</name>
    <message>
        <source>The program ZOKEClusterServer is not beside this one: sessions show nothing</source>
        <translation>Das Programm ZOKEClusterServer liegt nicht neben diesem: Sitzungen zeigen nichts</translation>
    </message>
    <message>
        <source>Cluster</source>
        <translation>Cluster</translation>
    </message>
    <message>
        <source>No node of the configuration can be reached.
Do you want to rehearse the session on this machine?</source>
        <translation>Kein Knoten der Konfiguration ist erreichbar.
Soll die Sitzung auf diesem Rechner geprobt werden?</translation>
    </message>
</context>
<context>
    <name>zoHostAutosave</name>
    <message>
        <source>Changes that are not saved cannot be kept for the case of a crash: %1. Save them.</source>
        <translation>Ungespeicherte Änderungen können für den Fall eines Absturzes nicht aufbewahrt werden: %1. Bitte speichern.</translation>
    </message>
</context>
<context>
    <name>zoHostCameraPanel</name>
    <message>
        <source>Add</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
</context>
<context>
    <name>zoHostClusterPage</name>
    <message>
        <source> MiB</source>
        <translation> MiB</translation>
    </message>
    <message>
        <source>Do not ask</source>
        <translation>Nicht fragen</translation>
    </message>
    <message>
        <source>&amp;Memory per node:</source>
        <translation>&amp;Speicher pro Knoten:</translation>
    </message>
    <message>
        <source>&amp;End the session when a node is lost</source>
        <translation>Sitzung &amp;beenden, wenn ein Knoten verloren geht</translation>
    </message>
    <message>
        <source>Node servers</source>
        <translation>Knotenserver</translation>
    </message>
    <message>
        <source>This program (shows nothing)</source>
        <translation>Dieses Programm (zeigt nichts)</translation>
    </message>
    <message>
        <source>Takes effect when the program is started next</source>
        <translation>Wirkt beim nächsten Start des Programms</translation>
    </message>
    <message>
        <source>How a program is started on another machine: %h is its name, %program what is started there. No shell of this machine reads it.</source>
        <translation>Wie ein Programm auf einem anderen Rechner gestartet wird: %h ist dessen Name, %program das, was dort gestartet wird. Keine Shell dieses Rechners liest es.</translation>
    </message>
    <message>
        <source>Name or path of the server program on the nodes</source>
        <translation>Name oder Pfad des Serverprogramms auf den Knoten</translation>
    </message>
    <message>
        <source>A start asks when a machine has less memory available for a node</source>
        <translation>Ein Start fragt nach, wenn ein Rechner weniger Speicher für einen Knoten frei hat</translation>
    </message>
    <message>
        <source>Each node runs the program ZOKEClusterServer, which opens its windows. When all hosts are this machine, a session is a rehearsal: its windows are scaled into this desktop.</source>
        <translation>Auf jedem Knoten läuft das Programm ZOKEClusterServer, das dessen Fenster öffnet. Sind alle Hosts dieser Rechner, ist eine Sitzung eine Probe: Ihre Fenster werden in diesen Bildschirm verkleinert.</translation>
    </message>
    <message>
        <source>&amp;Sessions run on:</source>
        <translation>&amp;Sitzungen laufen auf:</translation>
    </message>
    <message>
        <source>&amp;Launch command:</source>
        <translation>Start&amp;befehl:</translation>
    </message>
    <message>
        <source>Server &amp;program:</source>
        <translation>Server&amp;programm:</translation>
    </message>
    <message>
        <source>Cluster sessions</source>
        <translation>Cluster-Sitzungen</translation>
    </message>
    <message>
        <source>The launch command &quot;%1&quot; cannot be used: %2</source>
        <translation>Der Startbefehl „%1“ ist nicht brauchbar: %2</translation>
    </message>
    <message>
        <source>ParaView</source>
        <translation>ParaView</translation>
    </message>
    <message>
        <source>P&amp;araView&apos;s server:</source>
        <translation>P&amp;araView-Server:</translation>
    </message>
    <message>
        <source>P&amp;ort of ParaView:</source>
        <translation>P&amp;ort von ParaView:</translation>
    </message>
    <message>
        <source>Cl&amp;ients of ParaView:</source>
        <translation>Cl&amp;ients von ParaView:</translation>
    </message>
    <message>
        <source>Calls its clien&amp;t on:</source>
        <translation>Ruf&amp;t seinen Client auf:</translation>
    </message>
    <message>
        <source>Name or path of ParaView&apos;s server, pvserver, on all machines</source>
        <translation>Name oder Pfad des ParaView-Servers, pvserver, auf allen Rechnern</translation>
    </message>
    <message>
        <source>Where ParaView&apos;s server waits for its client; when it is taken, the next ones are tried</source>
        <translation>Wo der ParaView-Server auf seinen Client wartet; ist er belegt, werden die nächsten versucht</translation>
    </message>
    <message>
        <source>On this machine when all of the wall is here</source>
        <translation>Auf diesem Rechner, wenn die ganze Wand hier steht</translation>
    </message>
    <message>
        <source>On this machine only; others tunnel</source>
        <translation>Nur auf diesem Rechner; andere tunneln</translation>
    </message>
    <message>
        <source>Anywhere</source>
        <translation>Überall</translation>
    </message>
    <message>
        <source>What the connect command names. The port is open on all addresses in any case: close it with a firewall.</source>
        <translation>Was der Verbindungsbefehl nennt. Der Port ist in jedem Fall auf allen Adressen offen: Eine Firewall kann ihn schließen.</translation>
    </message>
    <message>
        <source>nobody: it waits to be called</source>
        <translation>niemanden: er wartet auf den Ruf</translation>
    </message>
    <message>
        <source>For nodes that may not be reached: the machine of the client, which then listens on all of its addresses</source>
        <translation>Für Knoten, die nicht erreicht werden dürfen: der Rechner des Clients, der dann auf allen seinen Adressen lauscht</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be the name of ParaView&apos;s client</source>
        <translation>„%1“ kann nicht der Name des ParaView-Clients sein</translation>
    </message>
</context>
<context>
    <name>zoHostConfigurationService</name>
    <message>
        <source>No module is loaded that edits configurations</source>
        <translation>Es ist kein Modul geladen, das Konfigurationen bearbeitet</translation>
    </message>
    <message>
        <source>A session runs</source>
        <translation>Eine Sitzung läuft</translation>
    </message>
    <message>
        <source>A dialog that edits the configuration is open</source>
        <translation>Ein Dialog, der die Konfiguration bearbeitet, ist offen</translation>
    </message>
    <message>
        <source>The configuration cannot be used: %1</source>
        <translation>Die Konfiguration ist nicht brauchbar: %1</translation>
    </message>
    <message>
        <source>The text holds no cluster configuration</source>
        <translation>Der Text enthält keine Cluster-Konfiguration</translation>
    </message>
</context>
<context>
    <name>zoHostConnectionPanel</name>
    <message>
        <source>Command that connects ParaView</source>
        <translation>Befehl, der ParaView verbindet</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Start ParaView</source>
        <translation>ParaView starten</translation>
    </message>
    <message>
        <source>Starts ParaView on this machine and connects it</source>
        <translation>Startet ParaView auf diesem Rechner und verbindet es</translation>
    </message>
    <message>
        <source>Restart session</source>
        <translation>Sitzung neu starten</translation>
    </message>
    <message>
        <source>Stops the session and starts it with the configuration as it is now</source>
        <translation>Beendet die Sitzung und startet sie mit der Konfiguration, wie sie jetzt ist</translation>
    </message>
    <message>
        <source>No session</source>
        <translation>Keine Sitzung</translation>
    </message>
    <message>
        <source>ParaView is connected</source>
        <translation>ParaView ist verbunden</translation>
    </message>
    <message>
        <source>Waits for ParaView:</source>
        <translation>Wartet auf ParaView:</translation>
    </message>
    <message>
        <source>The configuration changed: %1 needs a new start</source>
        <translation>Die Konfiguration hat sich geändert; ein neuer Start ist nötig für %1</translation>
    </message>
    <message>
        <source>%1 cannot be started</source>
        <translation>%1 lässt sich nicht starten</translation>
    </message>
</context>
<context>
    <name>zoHostDocument</name>
    <message>
        <source>Unable to save %1: %2</source>
        <translation>%1 kann nicht gespeichert werden: %2</translation>
    </message>
</context>
<context>
    <name>zoHostEarlierConfigurations</name>
    <message>
        <source>The folder cannot be made</source>
        <translation>Der Ordner lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>The folder cannot be written</source>
        <translation>In den Ordner lässt sich nicht schreiben</translation>
    </message>
    <message>
        <source>Unable to read earlier configuration %1: %2</source>
        <translation>Frühere Konfiguration %1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>Unable to keep the replaced configuration in %1: %2. It stays under File &gt; Earlier configurations until the host ends.</source>
        <translation>Die ersetzte Konfiguration kann nicht in %1 aufbewahrt werden: %2. Sie bleibt unter Datei &gt; Frühere Konfigurationen, bis das Programm endet.</translation>
    </message>
</context>
<context>
    <name>zoHostEarlierDialog</name>
    <message>
        <source>Earlier Configurations</source>
        <translation>Frühere Konfigurationen</translation>
    </message>
    <message>
        <source>Earlier configurations</source>
        <translation>Frühere Konfigurationen</translation>
    </message>
    <message>
        <source>Replaced</source>
        <translation>Ersetzt</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Nodes</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Displays</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>Text of the configuration</source>
        <translation>Text der Konfiguration</translation>
    </message>
    <message>
        <source>&amp;Bring back</source>
        <translation>&amp;Zurückholen</translation>
    </message>
    <message>
        <source>(never saved)</source>
        <translation>(nie gespeichert)</translation>
    </message>
    <message>
        <source>A configuration that New, Load, Import or the cluster replaces is kept here.</source>
        <translation>Konfigurationen, die durch Neu, Laden, Importieren oder den Cluster ersetzt werden, bleiben hier erhalten.</translation>
    </message>
    <message>
        <source>It had no file.</source>
        <translation>Sie hatte keine Datei.</translation>
    </message>
    <message>
        <source>Networks: %1   Nodes: %2   Projections: %3   Displays: %4   Windows: %5   Viewports: %6</source>
        <translation>Netzwerke: %1   Knoten: %2   Projektionen: %3   Anzeigen: %4   Fenster: %5   Viewports: %6</translation>
    </message>
    <message>
        <source>A session is running. Stop it to bring a configuration back.</source>
        <translation>Eine Sitzung läuft. Um eine Konfiguration zurückzuholen, muss sie gestoppt werden.</translation>
    </message>
    <message>
        <source>The configuration that is open now is kept here when you bring another back.</source>
        <translation>Die jetzt geöffnete Konfiguration bleibt hier erhalten, wenn eine andere zurückgeholt wird.</translation>
    </message>
    <message>
        <source>nothing of it can be read</source>
        <translation>nichts davon ist lesbar</translation>
    </message>
    <message>
        <source>It is no configuration that could be brought back: %1</source>
        <translation>Es ist keine Konfiguration, die zurückgeholt werden könnte: %1</translation>
    </message>
</context>
<context>
    <name>zoHostFileGuard</name>
    <message>
        <source>%1 was changed by another program since it was loaded and is not overwritten</source>
        <translation>%1 wurde seit dem Laden von einem anderen Programm geändert und wird nicht überschrieben</translation>
    </message>
    <message>
        <source>%1 was changed by another program since it was loaded.</source>
        <translation>%1 wurde seit dem Laden von einem anderen Programm geändert.</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>&amp;Overwrite</source>
        <translation>Übers&amp;chreiben</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>%1 was changed by another program. Save asks before it overwrites it.</source>
        <translation>%1 wurde von einem anderen Programm geändert. Speichern fragt, bevor es überschreibt.</translation>
    </message>
    <message>
        <source>%1 was changed by another program.</source>
        <translation>%1 wurde von einem anderen Programm geändert.</translation>
    </message>
    <message>
        <source>Read it again?</source>
        <translation>Neu laden?</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>&amp;Behalten</translation>
    </message>
    <message>
        <source>line %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>%1 holds bytes that are no text.</source>
        <translation>%1 enthält Bytes, die kein Text sind.</translation>
    </message>
    <message>
        <source>The first ones are in %1. The window shows %2 for them. The file stays as it is until it is saved, and that is asked first.</source>
        <translation>Die ersten stehen in %1. Das Fenster zeigt dafür %2. Die Datei bleibt, wie sie ist, bis sie gespeichert wird; davor wird gefragt.</translation>
    </message>
    <message>
        <source>Overwrite it with what the window shows, or read it again? Reading it again keeps what the window shows under File &gt; Earlier configurations.</source>
        <translation>Mit dem Inhalt des Fensters überschreiben oder neu laden? Beim Neuladen bleibt der Inhalt des Fensters unter Datei &gt; Frühere Konfigurationen.</translation>
    </message>
    <message>
        <source>%1 holds bytes that are no text and is not overwritten</source>
        <translation>%1 enthält Bytes, die kein Text sind, und wird nicht überschrieben</translation>
    </message>
    <message>
        <source>The first ones are in %1. Saving writes %2 in their place. What the file holds now is then kept under File &gt; Earlier configurations.</source>
        <translation>Die ersten stehen in %1. Gespeichert wird dafür %2. Was die Datei jetzt enthält, bleibt dann unter Datei &gt; Frühere Konfigurationen.</translation>
    </message>
    <message>
        <source>%1 holds no cluster configuration.</source>
        <translation>%1 enthält keine Cluster-Konfiguration.</translation>
    </message>
    <message>
        <source>The window shows an empty one instead. The file stays as it is until it is saved, and that is asked first.</source>
        <translation>Das Fenster zeigt stattdessen eine leere. Die Datei bleibt, wie sie ist, bis sie gespeichert wird, und davor wird gefragt.</translation>
    </message>
    <message>
        <source>Saving replaces all that it holds by what the window shows. What the file holds now is then kept under File &gt; Earlier configurations.</source>
        <translation>Speichern ersetzt ihren ganzen Inhalt durch das, was das Fenster zeigt. Was die Datei jetzt enthält, bleibt dann unter Datei &gt; Frühere Konfigurationen erhalten.</translation>
    </message>
    <message>
        <source>%1 holds no cluster configuration and is not overwritten: %2</source>
        <translation>%1 enthält keine Cluster-Konfiguration und wird nicht überschrieben: %2</translation>
    </message>
    <message>
        <source>Configuration %1 cannot be used: %2</source>
        <translation>Konfiguration %1 ist nicht verwendbar: %2</translation>
    </message>
</context>
<context>
    <name>zoHostFileNews</name>
    <message>
        <source>%1 could not be saved.</source>
        <translation>%1 konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>What is not saved is still there.</source>
        <translation>Was nicht gespeichert ist, ist noch da.</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>%1 was imported. It is not saved yet.</source>
        <translation>%1 wurde importiert und ist noch nicht gespeichert.</translation>
    </message>
    <message>
        <source>%1 is of version %2, and this program knows version %3. What is new in it is not shown, and Save leaves it out.</source>
        <translation>%1 hat die Version %2, und dieses Programm kennt die Version %3. Was daran neu ist, wird nicht gezeigt, und Speichern lässt es weg.</translation>
    </message>
    <message>
        <source>%1 is of a later version.</source>
        <translation>%1 hat eine spätere Version.</translation>
    </message>
    <message>
        <source>It is of version %1, and this program knows version %2. What is new in it is not shown, and Save leaves it out.</source>
        <translation>Sie hat die Version %1, und dieses Programm kennt die Version %2. Was daran neu ist, wird nicht gezeigt, und Speichern lässt es weg.</translation>
    </message>
</context>
<context>
    <name>zoHostGeneralPage</name>
    <message>
        <source>Open the &amp;last configuration again</source>
        <translation>Die &amp;letzte Konfiguration wieder öffnen</translation>
    </message>
    <message>
        <source>Show the start &amp;page when no configuration is opened</source>
        <translation>Die Startseite &amp;zeigen, wenn keine Konfiguration geöffnet wird</translation>
    </message>
    <message>
        <source>As the desktop</source>
        <translation>Wie der Desktop</translation>
    </message>
    <message>
        <source>Takes effect when the program is started next</source>
        <translation>Wirkt beim nächsten Start des Programms</translation>
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
        <source>How often changes that are not saved are kept for the case of a crash. The next start offers them.</source>
        <translation>Wie oft Änderungen, die nicht gespeichert sind, für den Fall eines Absturzes gesichert werden. Der nächste Start bietet sie an.</translation>
    </message>
    <message>
        <source>The unit of lengths in pictures. Files and fields hold millimetres.</source>
        <translation>Die Einheit von Längen in Bildern. Dateien und Felder enthalten Millimeter.</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>&amp;Sprache:</translation>
    </message>
    <message>
        <source>At the start:</source>
        <translation>Beim Start:</translation>
    </message>
    <message>
        <source>&amp;Keep unsaved changes every:</source>
        <translation>Ungespeichertes si&amp;chern alle:</translation>
    </message>
    <message>
        <source>&amp;Unit of lengths:</source>
        <translation>&amp;Einheit von Längen:</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
</context>
<context>
    <name>zoHostImportDialog</name>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>%1 was imported.</source>
        <translation>%1 wurde importiert.</translation>
    </message>
    <message>
        <source>%1 was imported. Look at this in the result:</source>
        <translation>%1 wurde importiert. Im Ergebnis ist das zu prüfen:</translation>
    </message>
    <message>
        <source>Remarks</source>
        <translation>Hinweise</translation>
    </message>
    <message>
        <source>It is in no file of the present format yet: Save asks for a name.</source>
        <translation>Sie ist noch in keiner Datei des heutigen Formats: Speichern fragt nach einem Namen.</translation>
    </message>
    <message>
        <source>Save would write it over %1, which is still the open file. Save As writes another one.</source>
        <translation>Speichern würde damit %1 überschreiben, denn das ist noch die geöffnete Datei. „Speichern unter“ schreibt eine andere.</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
</context>
<context>
    <name>zoHostJournal</name>
    <message>
        <source>Configuration %1 loaded</source>
        <translation>Konfiguration %1 geladen</translation>
    </message>
    <message>
        <source>Configuration %1 saved</source>
        <translation>Konfiguration %1 gespeichert</translation>
    </message>
</context>
<context>
    <name>zoHostLogPanel</name>
    <message>
        <source>Level of messages</source>
        <translation>Stufe der Meldungen</translation>
    </message>
    <message>
        <source>All messages</source>
        <translation>Alle Meldungen</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <translation>Warnungen und Fehler</translation>
    </message>
    <message>
        <source>Errors only</source>
        <translation>Nur Fehler</translation>
    </message>
    <message>
        <source>How grave a message is that is shown</source>
        <translation>Wie schwer eine Meldung wiegt, die gezeigt wird</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find in the log</source>
        <translation>Im Protokoll suchen</translation>
    </message>
    <message>
        <source>Return: the next place, Shift+Return: the one before, Esc: back to the log</source>
        <translation>Eingabe: nächste Stelle, Umschalt+Eingabe: vorige Stelle, Esc: zurück zum Protokoll</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copies what is selected, else all that is shown</source>
        <translation>Kopiert das Ausgewählte, sonst alles Gezeigte</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Speichern...</translation>
    </message>
    <message>
        <source>Writes what is shown to a file</source>
        <translation>Schreibt das Gezeigte in eine Datei</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Forgets all messages</source>
        <translation>Vergisst alle Meldungen</translation>
    </message>
    <message>
        <source>Save Log</source>
        <translation>Protokoll speichern</translation>
    </message>
    <message>
        <source>Log (*.log *.txt)</source>
        <translation>Protokoll (*.log *.txt)</translation>
    </message>
    <message>
        <source>Unable to save the log as %1: %2</source>
        <translation>Das Protokoll kann nicht als %1 gespeichert werden: %2</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>zoHostLogView</name>
    <message>
        <source>Messages of the host and its modules appear here.</source>
        <translation>Hier erscheinen die Meldungen des Programms und seiner Module.</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Clear log</source>
        <translation>Protokoll leeren</translation>
    </message>
    <message>
        <source>Error: </source>
        <translation>Fehler: </translation>
    </message>
    <message>
        <source>Warning: </source>
        <translation>Warnung: </translation>
    </message>
    <message>
        <source> (%1 times)</source>
        <translation> (%1-mal)</translation>
    </message>
</context>
<context>
    <name>zoHostMainWindow</name>
    <message>
        <source>Cluster: set up render nodes and displays, start and stop a session</source>
        <translation>Cluster: Renderknoten und Anzeigen einrichten, eine Sitzung starten und stoppen</translation>
    </message>
    <message>
        <source>No module is loaded.
The log says why.</source>
        <translation>Kein Modul ist geladen.
Das Protokoll nennt den Grund.</translation>
    </message>
    <message>
        <source>Modules</source>
        <translation>Module</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>&amp;Einstellungen...</translation>
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
        <source>&amp;About zohost</source>
        <translation>Ü&amp;ber zohost</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Rendering</source>
        <translation>Rendering</translation>
    </message>
    <message>
        <source>&amp;Earlier configurations...</source>
        <translation>&amp;Frühere Konfigurationen...</translation>
    </message>
    <message>
        <source>What was not saved is kept under File &gt; Earlier configurations.</source>
        <translation>Was nicht gespeichert war, findet sich unter Datei &gt; Frühere Konfigurationen.</translation>
    </message>
    <message>
        <source>%1 is not there any more.</source>
        <translation>%1 ist nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>&amp;Remove from the list</source>
        <translation>Aus der Liste &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>&amp;Behalten</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>The configuration has never been saved.</source>
        <translation>Die Konfiguration wurde noch nie gespeichert.</translation>
    </message>
    <message>
        <source>%1 has changes that are not saved.</source>
        <translation>%1 enthält Änderungen, die nicht gespeichert sind.</translation>
    </message>
    <message>
        <source>What is not saved is lost when the host closes.</source>
        <translation>Was nicht gespeichert ist, geht beim Schließen verloren.</translation>
    </message>
    <message>
        <source>Configuration %1 is not there any more</source>
        <translation>Konfiguration %1 ist nicht mehr vorhanden</translation>
    </message>
    <message>
        <source>Unable to load configuration %1: no loaded module opens configurations</source>
        <translation>Konfiguration %1 kann nicht geladen werden: kein geladenes Modul öffnet Konfigurationen</translation>
    </message>
    <message>
        <source>Unable to bring the configuration back: no loaded module opens configurations</source>
        <translation>Die Konfiguration kann nicht zurückgeholt werden: kein geladenes Modul öffnet Konfigurationen</translation>
    </message>
    <message>
        <source>Session: %1</source>
        <translation>Sitzung: %1</translation>
    </message>
    <message>
        <source>Nodes</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>The configuration could not be saved.</source>
        <translation>Die Konfiguration konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>The host stays open, and what is not saved is still there.</source>
        <translation>Das Programm bleibt offen, und was nicht gespeichert ist, ist noch da.</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Tool bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Fi&amp;le</source>
        <translation>Date&amp;i</translation>
    </message>
    <message>
        <source>Edi&amp;t</source>
        <translation>Bea&amp;rbeiten</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>&amp;Handbuch</translation>
    </message>
    <message>
        <source>&amp;Start page</source>
        <translation>&amp;Startseite</translation>
    </message>
    <message>
        <source>%1 cannot be read any more: Save asks for a name.</source>
        <translation>%1 ist nicht mehr lesbar: Speichern fragt nach einem Namen.</translation>
    </message>
    <message>
        <source>A session is running: the changes that were not saved are offered again at the next start.</source>
        <translation>Eine Sitzung läuft: Die nicht gespeicherten Änderungen werden beim nächsten Start wieder angeboten.</translation>
    </message>
</context>
<context>
    <name>zoHostManualWindow</name>
    <message>
        <source>Manual</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>Find on this page</source>
        <translation>Auf dieser Seite suchen</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>The manual is not installed. It was looked for in:</source>
        <translation>Das Handbuch ist nicht installiert. Gesucht wurde es in:</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>%1 - Manual</source>
        <translation>%1 - Handbuch</translation>
    </message>
</context>
<context>
    <name>zoHostNodesPanel</name>
    <message>
        <source>Nodes of the session</source>
        <translation>Knoten der Sitzung</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Screens</source>
        <translation>Bildschirme</translation>
    </message>
    <message>
        <source>Free memory</source>
        <translation>Freier Speicher</translation>
    </message>
    <message>
        <source>Waited</source>
        <translation>Gewartet</translation>
    </message>
    <message>
        <source>Tile</source>
        <translation>Kachel</translation>
    </message>
    <message>
        <source>How long the node waited in the last frame until all others had drawn theirs</source>
        <translation>Wie lange der Knoten im letzten Bild gewartet hat, bis alle anderen ihres gezeichnet hatten</translation>
    </message>
    <message>
        <source>Lose</source>
        <translation>Verlieren</translation>
    </message>
    <message>
        <source>Rehearsal: ends the node&apos;s program, as if its machine were off</source>
        <translation>Probe: beendet das Programm des Knotens, als wäre sein Rechner aus</translation>
    </message>
    <message>
        <source>Hang</source>
        <translation>Hängen</translation>
    </message>
    <message>
        <source>Rehearsal: stops the node&apos;s program, as if it hung</source>
        <translation>Probe: hält das Programm des Knotens an, als hinge es</translation>
    </message>
    <message>
        <source>Delay</source>
        <translation>Bremsen</translation>
    </message>
    <message>
        <source>Rehearsal: the node takes half a second longer for each frame</source>
        <translation>Probe: der Knoten braucht für jedes Bild eine halbe Sekunde länger</translation>
    </message>
    <message>
        <source>connecting</source>
        <translation>verbindet</translation>
    </message>
    <message>
        <source>running</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>lost: %1</source>
        <translation>verloren: %1</translation>
    </message>
    <message>
        <source>No session</source>
        <translation>Keine Sitzung</translation>
    </message>
    <message>
        <source>%1 of %2 run</source>
        <translation>%1 von %2 laufen</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>beendet</translation>
    </message>
    <message>
        <source>%1 MiB</source>
        <translation>%1 MiB</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
</context>
<context>
    <name>zoHostOptions</name>
    <message>
        <source>Shows and runs render cluster configurations.</source>
        <translation>Zeigt Konfigurationen von Renderclustern und führt sie aus.</translation>
    </message>
    <message>
        <source>Prints this help and exits.</source>
        <translation>Gibt diese Hilfe aus und beendet sich.</translation>
    </message>
    <message>
        <source>Prints the version and exits.</source>
        <translation>Gibt die Version aus und beendet sich.</translation>
    </message>
    <message>
        <source>Loads this configuration instead of the default file of the preferences.</source>
        <translation>Lädt diese Konfiguration anstelle der Standarddatei aus den Einstellungen.</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>DATEI</translation>
    </message>
    <message>
        <source>Starts the cluster once the window is shown.</source>
        <translation>Startet den Cluster, sobald das Fenster zu sehen ist.</translation>
    </message>
    <message>
        <source>Writes a picture of the window, of the running cluster when --start is given.</source>
        <translation>Schreibt ein Bild des Fensters; mit --start das des laufenden Clusters.</translation>
    </message>
    <message>
        <source>FILE.png</source>
        <translation>DATEI.png</translation>
    </message>
    <message>
        <source>Exits when the session ends. With --start and --non-interactive the host measures the network, stops the session itself and exits.</source>
        <translation>Beendet sich mit der Sitzung. Mit --start und --non-interactive wird das Netzwerk gemessen und die Sitzung von selbst gestoppt.</translation>
    </message>
    <message>
        <source>Loads this module instead of the one that belongs to the host. May be given several times.</source>
        <translation>Lädt dieses Modul anstelle des mitgelieferten. Darf mehrfach angegeben werden.</translation>
    </message>
    <message>
        <source>Speaks this language, for instance de, instead of the one of the locale.</source>
        <translation>Spricht diese Sprache, zum Beispiel en, anstelle der des Systems.</translation>
    </message>
    <message>
        <source>LANGUAGE</source>
        <translation>SPRACHE</translation>
    </message>
    <message>
        <source>Try &apos;zohost --help&apos; for the options.</source>
        <translation>Die Optionen nennt &apos;zohost --help&apos;.</translation>
    </message>
    <message>
        <source>unexpected argument &apos;%1&apos;</source>
        <translation>unerwartetes Argument &apos;%1&apos;</translation>
    </message>
    <message>
        <source>--%1 needs a file name</source>
        <translation>--%1 braucht einen Dateinamen</translation>
    </message>
    <message>
        <source>--language needs a language</source>
        <translation>--language braucht eine Sprache</translation>
    </message>
    <message>
        <source>--%1 is given more than once</source>
        <translation>--%1 ist mehrfach angegeben</translation>
    </message>
    <message>
        <source>ENGINE</source>
        <translation>WORAUF</translation>
    </message>
    <message>
        <source>Runs the servers of all nodes on this machine, with small windows on its desktop.</source>
        <translation>Lässt die Server aller Knoten auf diesem Rechner laufen, mit kleinen Fenstern auf seinem Bildschirm.</translation>
    </message>
    <message>
        <source>Turns a picture on once the session runs: tiles or test-image.</source>
        <translation>Schaltet ein Bild ein, sobald die Sitzung läuft: tiles oder test-image.</translation>
    </message>
    <message>
        <source>PICTURE</source>
        <translation>BILD</translation>
    </message>
    <message>
        <source>Writes all displays of the running session as they are lit, arranged as the wall is.</source>
        <translation>Schreibt alle Anzeigen der laufenden Sitzung, wie sie leuchten, angeordnet wie die Wand.</translation>
    </message>
    <message>
        <source>Writes what each window of the running session shows as NODE-WINDOW.png.</source>
        <translation>Schreibt, was jedes Fenster der laufenden Sitzung zeigt, als KNOTEN-FENSTER.png.</translation>
    </message>
    <message>
        <source>FOLDER</source>
        <translation>ORDNER</translation>
    </message>
    <message>
        <source>--%1: &quot;%2&quot; is none of %3</source>
        <translation>--%1: „%2“ ist keins von %3</translation>
    </message>
    <message>
        <source>--%1 needs node servers, and --engine local has none</source>
        <translation>--%1 braucht Knotenserver, und --engine local hat keine</translation>
    </message>
    <message>
        <source>Runs sessions on the node servers (nodes), on ParaView&apos;s server (paraview) or inside this program, which then shows nothing (local), instead of what the preferences say.</source>
        <translation>Führt Sitzungen auf den Knotenservern (nodes), auf dem ParaView-Server (paraview) oder in diesem Programm aus, das dann nichts zeigt (local), statt wie in den Einstellungen.</translation>
    </message>
    <message>
        <source>--%1 needs node servers: ParaView&apos;s server draws on the displays alone</source>
        <translation>--%1 braucht Knotenserver: Der ParaView-Server zeichnet nur auf die Bildschirme</translation>
    </message>
    <message>
        <source>The same as --config FILE.</source>
        <translation>Dasselbe wie --config FILE.</translation>
    </message>
    <message>
        <source>a configuration needs a file name</source>
        <translation>eine Konfiguration braucht einen Dateinamen</translation>
    </message>
    <message>
        <source>Asks nothing, prints each step on standard output and exits with 1 when a step fails. Without --start it exits once the configuration is loaded.</source>
        <translation>Fragt nichts, gibt jeden Schritt auf der Standardausgabe aus und endet mit 1, wenn einer misslingt. Ohne --start endet es, sobald die Konfiguration geladen ist.</translation>
    </message>
    <message>
        <source>--language: &quot;%1&quot; is none of %2</source>
        <translation>--language: &quot;%1&quot; ist keines von %2</translation>
    </message>
    <message>
        <source>--%1 needs --start</source>
        <translation>--%1 verlangt --start</translation>
    </message>
</context>
<context>
    <name>zoHostPreferencesDialog</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>No module offers preferences.</source>
        <translation>Kein Modul bietet Einstellungen an.</translation>
    </message>
</context>
<context>
    <name>zoHostRecentMenu</name>
    <message>
        <source>&amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>No files yet</source>
        <translation>Noch keine Dateien</translation>
    </message>
    <message>
        <source>&amp;Clear list</source>
        <translation>Liste &amp;leeren</translation>
    </message>
</context>
<context>
    <name>zoHostRecovery</name>
    <message>
        <source>A configuration that was never saved, of %1</source>
        <translation>Eine nie gespeicherte Konfiguration vom %1</translation>
    </message>
    <message>
        <source>%1, of %2</source>
        <translation>%1, vom %2</translation>
    </message>
    <message>
        <source>They stay under File &gt; Earlier configurations.</source>
        <translation>Sie bleiben unter Datei &gt; Frühere Konfigurationen.</translation>
    </message>
    <message>
        <source>&amp;Bring back</source>
        <translation>&amp;Zurückholen</translation>
    </message>
    <message>
        <source>&amp;Show them</source>
        <translation>An&amp;zeigen</translation>
    </message>
    <message>
        <source>The changes that are not saved could not be kept anywhere: %1</source>
        <translation>Die ungespeicherten Änderungen konnten nirgends aufgehoben werden: %1</translation>
    </message>
    <message>
        <source>The changes that are not saved are kept in %1. The next start offers them.</source>
        <translation>Die ungespeicherten Änderungen liegen in %1. Der nächste Start bietet sie an.</translation>
    </message>
    <message>
        <source>nothing of them can be read</source>
        <translation>nichts davon ist lesbar</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Nicht gespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Bring back the configuration that was never saved?</source>
        <translation>Die nie gespeicherte Konfiguration zurückholen?</translation>
    </message>
    <message>
        <source>Bring back the changes of %1 that were not saved?</source>
        <translation>Die nicht gespeicherten Änderungen an %1 zurückholen?</translation>
    </message>
    <message>
        <source>The host broke off before they were saved.</source>
        <translation>Das Programm ist abgebrochen, bevor sie gespeichert waren.</translation>
    </message>
    <message>
        <source>The host was told to end before they were saved.</source>
        <translation>Das Programm wurde beendet, bevor sie gespeichert waren.</translation>
    </message>
    <message>
        <source>Otherwise they stay under File &gt; Earlier configurations.</source>
        <translation>Sonst bleiben sie unter Datei &gt; Frühere Konfigurationen.</translation>
    </message>
    <message>
        <source>&amp;Do not bring back</source>
        <translation>&amp;Nicht zurückholen</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Look at %1 configurations whose changes were not saved, to bring one back?</source>
        <translation>%1 Konfigurationen mit nicht gespeicherten Änderungen ansehen, um eine zurückzuholen?</translation>
    </message>
    <message>
        <source>Damage: %1</source>
        <translation>Schaden: %1</translation>
    </message>
    <message>
        <source>What is left is kept in %1</source>
        <translation>Was übrig ist, bleibt in %1</translation>
    </message>
    <message>
        <source>Changes that were not saved are damaged and cannot be brought back.</source>
        <translation>Nicht gespeicherte Änderungen sind beschädigt und können nicht zurückgeholt werden.</translation>
    </message>
    <message>
        <source>Changes that were not saved are damaged, what is left is kept in %1: %2</source>
        <translation>Nicht gespeicherte Änderungen sind beschädigt, was davon übrig ist, liegt in %1: %2</translation>
    </message>
</context>
<context>
    <name>zoHostSession</name>
    <message>
        <source>Unable to load configuration %1: %2</source>
        <translation>Konfiguration %1 kann nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>Configuration %1 cannot be used: %2</source>
        <translation>Konfiguration %1 ist nicht verwendbar: %2</translation>
    </message>
    <message>
        <source>Unable to load configuration %1: no loaded module opens configurations</source>
        <translation>Konfiguration %1 kann nicht geladen werden: kein geladenes Modul öffnet Konfigurationen</translation>
    </message>
    <message>
        <source>Unable to start: no module runs a cluster</source>
        <translation>Starten nicht möglich: kein Modul betreibt einen Cluster</translation>
    </message>
    <message>
        <source>The cluster did not start</source>
        <translation>Der Cluster ist nicht gestartet</translation>
    </message>
    <message>
        <source>The network could not be measured</source>
        <translation>Das Netzwerk konnte nicht gemessen werden</translation>
    </message>
    <message>
        <source>Unable to write screenshot %1: it is the configuration</source>
        <translation>Bildschirmfoto %1 kann nicht geschrieben werden: es ist die Konfiguration</translation>
    </message>
    <message>
        <source>Unable to write screenshot %1: %2</source>
        <translation>Bildschirmfoto %1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Unable to stop: no module runs a cluster</source>
        <translation>Stoppen nicht möglich: kein Modul betreibt einen Cluster</translation>
    </message>
    <message>
        <source>Configuration %1 loaded</source>
        <translation>Konfiguration %1 geladen</translation>
    </message>
    <message>
        <source>Unable to take pictures: sessions do not run on node servers</source>
        <translation>Es lassen sich keine Bilder aufnehmen: Sitzungen laufen nicht auf Knotenservern</translation>
    </message>
    <message>
        <source>Unable to take pictures: %1</source>
        <translation>Es lassen sich keine Bilder aufnehmen: %1</translation>
    </message>
    <message>
        <source>Unable to write wall picture %1: no window shows anything</source>
        <translation>Das Bild der Wand %1 lässt sich nicht schreiben: Kein Fenster zeigt etwas</translation>
    </message>
    <message>
        <source>Unable to make folder %1</source>
        <translation>Der Ordner %1 lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>Unable to write picture %1: %2</source>
        <translation>Das Bild %1 lässt sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>it is closed</source>
        <translation>sie ist geschlossen</translation>
    </message>
    <message>
        <source>Unable to write to standard output: %1</source>
        <translation>Auf die Standardausgabe kann nicht geschrieben werden: %1</translation>
    </message>
</context>
<context>
    <name>zoHostSessionService</name>
    <message>
        <source>Configuration of the running cluster refused: %1</source>
        <translation>Konfiguration des laufenden Clusters zurückgewiesen: %1</translation>
    </message>
    <message>
        <source>Cluster start refused: a start is in progress</source>
        <translation>Start des Clusters abgelehnt: er wird gerade gestartet</translation>
    </message>
    <message>
        <source>the configuration is empty</source>
        <translation>die Konfiguration ist leer</translation>
    </message>
    <message>
        <source>the configuration is not well-formed: %1</source>
        <translation>die Konfiguration ist nicht wohlgeformt: %1</translation>
    </message>
    <message>
        <source>the configuration has no enabled node</source>
        <translation>die Konfiguration hat keinen aktivierten Knoten</translation>
    </message>
    <message>
        <source>aborted</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>a server already runs on %1</source>
        <translation>auf %1 läuft bereits ein Server</translation>
    </message>
    <message>
        <source>not enough memory for %1</source>
        <translation>nicht genug Speicher für %1</translation>
    </message>
    <message>
        <source>Cluster runs on %1</source>
        <translation>Cluster läuft auf %1</translation>
    </message>
    <message>
        <source>Cluster not started: %1</source>
        <translation>Cluster nicht gestartet: %1</translation>
    </message>
    <message>
        <source>Cluster stopped</source>
        <translation>Cluster gestoppt</translation>
    </message>
    <message>
        <source>Show tiles: on</source>
        <translation>Kacheln anzeigen: ein</translation>
    </message>
    <message>
        <source>Show tiles: off</source>
        <translation>Kacheln anzeigen: aus</translation>
    </message>
    <message>
        <source>Show test image: on</source>
        <translation>Testbild anzeigen: ein</translation>
    </message>
    <message>
        <source>Show test image: off</source>
        <translation>Testbild anzeigen: aus</translation>
    </message>
    <message>
        <source>Changed configuration sent to the running session</source>
        <translation>Geänderte Konfiguration an die laufende Sitzung gesendet</translation>
    </message>
</context>
<context>
    <name>zoHostStart</name>
    <message>
        <source>Unable to open a configuration: no loaded module opens them</source>
        <translation>Eine Konfiguration kann nicht geöffnet werden: kein geladenes Modul öffnet sie</translation>
    </message>
    <message>
        <source>Unable to open sample %1: %2</source>
        <translation>Das Beispiel %1 kann nicht geöffnet werden: %2</translation>
    </message>
</context>
<context>
    <name>zoHostStartPage</name>
    <message>
        <source>%1 nodes, %2 windows</source>
        <translation>%1 Knoten, %2 Fenster</translation>
    </message>
    <message>
        <source>&amp;Show this page at the start</source>
        <translation>Diese Seite beim &amp;Start zeigen</translation>
    </message>
    <message>
        <source>&lt;h2&gt;Light up a wall&lt;/h2&gt;</source>
        <translation>&lt;h2&gt;Eine Wand zum Leuchten bringen&lt;/h2&gt;</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;manual&quot;&gt;What walls, tiles and nodes are&lt;/a&gt; is in the manual: F1 opens it anywhere.</source>
        <translation>&lt;a href=&quot;manual&quot;&gt;Was Wände, Kacheln und Knoten sind&lt;/a&gt;, steht im Handbuch: F1 öffnet es überall.</translation>
    </message>
    <message>
        <source>&amp;New wall...</source>
        <translation>&amp;Neue Wand...</translation>
    </message>
    <message>
        <source>Kind, size, pixels and nodes on one page</source>
        <translation>Art, Größe, Pixel und Knoten auf einer Seite</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>A configuration from a file</source>
        <translation>Eine Konfiguration aus einer Datei</translation>
    </message>
    <message>
        <source>&amp;Begin with one node</source>
        <translation>&amp;Mit einem Knoten beginnen</translation>
    </message>
    <message>
        <source>A new configuration, to be filled by hand</source>
        <translation>Eine neue Konfiguration, von Hand zu füllen</translation>
    </message>
    <message>
        <source>Recent configurations</source>
        <translation>Zuletzt geöffnete Konfigurationen</translation>
    </message>
    <message>
        <source>Samples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>Opens as a copy without a name</source>
        <translation>Wird als Kopie ohne Namen geöffnet</translation>
    </message>
    <message>
        <source>&amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>S&amp;amples</source>
        <translation>&amp;Beispiele</translation>
    </message>
    <message>
        <source>No files yet</source>
        <translation>Noch keine Dateien</translation>
    </message>
</context>
<context>
    <name>zoHostUndoActions</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
</context>
<context>
    <name>zoLocalClusterService</name>
    <message>
        <source>aborted</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>Connecting to %1 ...</source>
        <translation>Verbinden mit %1 ...</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Cluster runs on %1</source>
        <translation>Cluster läuft auf %1</translation>
    </message>
    <message>
        <source>Network speed test failed: %1</source>
        <translation>Messung der Netzwerkgeschwindigkeit misslungen: %1</translation>
    </message>
    <message>
        <source>Other hosts on this machine cannot be seen: %1</source>
        <translation>Andere Sitzungen auf diesem Rechner sind nicht zu erkennen: %1</translation>
    </message>
    <message>
        <source>Node %1 not added: a server already runs on it</source>
        <translation>Knoten %1 nicht hinzugefügt: auf ihm läuft bereits ein Server</translation>
    </message>
</context>
<context>
    <name>zoLoopbackSpeedTest</name>
    <message>
        <source>a connection broke</source>
        <translation>eine Verbindung ist abgebrochen</translation>
    </message>
</context>
<context>
    <name>zoModuleFile</name>
    <message>
        <source>It is no file</source>
        <translation>Es ist keine Datei</translation>
    </message>
    <message>
        <source>The file is cut off: it has %1 bytes, and its own headers name more. Install or copy it anew</source>
        <translation>Die Datei ist abgeschnitten: sie hat %1 Bytes, und ihre eigenen Kopfdaten nennen mehr. Neu installieren oder kopieren</translation>
    </message>
    <message>
        <source>The file is damaged: its headers contradict each other. Install or copy it anew</source>
        <translation>Die Datei ist beschädigt: ihre Kopfdaten widersprechen einander. Neu installieren oder kopieren</translation>
    </message>
</context>
<context>
    <name>zoModuleLoader</name>
    <message>
        <source>There is no such file</source>
        <translation>Die Datei gibt es nicht</translation>
    </message>
    <message>
        <source>The module is loaded already</source>
        <translation>Das Modul ist schon geladen</translation>
    </message>
    <message>
        <source>It has no entry initPlugin</source>
        <translation>Ihm fehlt der Einsprung initPlugin</translation>
    </message>
    <message>
        <source>Its entry failed</source>
        <translation>Sein Einsprung ist gescheitert</translation>
    </message>
    <message>
        <source>Unable to load module %1: %2</source>
        <translation>Modul %1 kann nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>Module %1 loaded</source>
        <translation>Modul %1 geladen</translation>
    </message>
    <message>
        <source>Unable to unload module %1: %2</source>
        <translation>Modul %1 kann nicht entladen werden: %2</translation>
    </message>
</context>
<context>
    <name>zoModuleMetadata</name>
    <message>
        <source>It is a plug-in for another program (%1)</source>
        <translation>Es ist eine Erweiterung für ein anderes Programm (%1)</translation>
    </message>
    <message>
        <source>%1 needs a newer host: it was built for interface %2, this host has interface %3</source>
        <translation>%1 braucht einen neueren Host: es wurde für Schnittstelle %2 gebaut, dieser Host hat Schnittstelle %3</translation>
    </message>
    <message>
        <source>%1 was built for interface %2, this host has interface %3: install the module of this release</source>
        <translation>%1 wurde für Schnittstelle %2 gebaut, dieser Host hat Schnittstelle %3: installieren Sie das Modul dieser Version</translation>
    </message>
    <message>
        <source>%1 was built with Qt %2, this host with Qt %3: install the module for this host</source>
        <translation>%1 wurde mit Qt %2 gebaut, dieser Host mit Qt %3: installieren Sie das Modul für diesen Host</translation>
    </message>
    <message>
        <source>The file is damaged: what it says of itself cannot be read. Install or copy it anew</source>
        <translation>Die Datei ist beschädigt: was sie von sich sagt, ist nicht lesbar. Neu installieren oder kopieren</translation>
    </message>
</context>
<context>
    <name>zoNodeClusterService</name>
    <message>
        <source>Configuration of the running cluster refused: %1</source>
        <translation>Konfiguration des laufenden Clusters zurückgewiesen: %1</translation>
    </message>
    <message>
        <source>aborted</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>Connecting to %1 ...</source>
        <translation>Verbinden mit %1 ...</translation>
    </message>
    <message>
        <source>the nodes did not answer</source>
        <translation>die Knoten haben nicht geantwortet</translation>
    </message>
    <message>
        <source>%1 cannot be used</source>
        <translation>%1 nicht nutzbar</translation>
    </message>
    <message>
        <source>Node %1 failed: %2</source>
        <translation>Knoten %1 fehlgeschlagen: %2</translation>
    </message>
    <message>
        <source>the windows were not opened</source>
        <translation>die Fenster wurden nicht geöffnet</translation>
    </message>
    <message>
        <source>Cluster runs on %1</source>
        <translation>Cluster läuft auf %1</translation>
    </message>
    <message>
        <source>%1 does not belong to this program: %2</source>
        <translation>%1 gehört nicht zu diesem Programm: %2</translation>
    </message>
    <message>
        <source>Node %1 lost: %2</source>
        <translation>Knoten %1 verloren: %2</translation>
    </message>
    <message>
        <source>Node %1 not added: %2</source>
        <translation>Knoten %1 nicht hinzugefügt: %2</translation>
    </message>
    <message>
        <source>Connected to %1</source>
        <translation>Verbunden mit %1</translation>
    </message>
    <message>
        <source>Other hosts on this machine cannot be seen: %1</source>
        <translation>Andere Sitzungen auf diesem Rechner sind nicht zu erkennen: %1</translation>
    </message>
    <message>
        <source>Node %1: %2</source>
        <translation>Knoten %1: %2</translation>
    </message>
    <message>
        <source>its controller ended</source>
        <translation>ihre Steuerung hat sich beendet</translation>
    </message>
    <message>
        <source>its controller ended: %1</source>
        <translation>ihre Steuerung hat sich beendet: %1</translation>
    </message>
    <message>
        <source>Cluster session lost: %1</source>
        <translation>Cluster-Sitzung verloren: %1</translation>
    </message>
    <message>
        <source>it stopped answering</source>
        <translation>antwortet nicht mehr</translation>
    </message>
    <message>
        <source>Cluster session lost: no node runs any more</source>
        <translation>Cluster-Sitzung verloren: Kein Knoten läuft mehr</translation>
    </message>
    <message>
        <source>Cluster session ends: a node is lost</source>
        <translation>Cluster-Sitzung endet: Ein Knoten ist verloren</translation>
    </message>
    <message>
        <source>Network speed test failed: the nodes did not answer</source>
        <translation>Geschwindigkeitstest des Netzwerks fehlgeschlagen: Die Knoten haben nicht geantwortet</translation>
    </message>
    <message>
        <source>Node %1: sent %2 MByte/s, received %3 MByte/s</source>
        <translation>Knoten %1: gesendet %2 MByte/s, empfangen %3 MByte/s</translation>
    </message>
    <message>
        <source>no session runs</source>
        <translation>es läuft keine Sitzung</translation>
    </message>
</context>
<context>
    <name>zoNodeReasonText</name>
    <message>
        <source>it does not answer</source>
        <translation>antwortet nicht</translation>
    </message>
    <message>
        <source>it stopped answering</source>
        <translation>antwortet nicht mehr</translation>
    </message>
    <message>
        <source>a server already runs on it</source>
        <translation>darauf läuft bereits ein Server</translation>
    </message>
    <message>
        <source>its server ended</source>
        <translation>sein Server hat sich beendet</translation>
    </message>
    <message>
        <source>its network cannot be reached</source>
        <translation>sein Netzwerk ist nicht erreichbar</translation>
    </message>
    <message>
        <source>its program is version %1 with protocol %2, this one is version %3 with protocol %4</source>
        <translation>sein Programm hat Version %1 mit Protokoll %2, dieses Version %3 mit Protokoll %4</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be the name of a host</source>
        <translation>„%1“ kann kein Rechnername sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; holds characters that a remote shell would not pass on</source>
        <translation>„%1“ enthält Zeichen, die die Shell eines anderen Rechners nicht weitergäbe</translation>
    </message>
    <message>
        <source>screen %1 is missing, the machine has %2</source>
        <translation>Bildschirm %1 fehlt, der Rechner hat %2</translation>
    </message>
    <message>
        <source>no GL 3.3: %1</source>
        <translation>kein GL 3.3: %1</translation>
    </message>
    <message>
        <source>a line that is no message</source>
        <translation>eine Zeile, die keine Nachricht ist</translation>
    </message>
    <message>
        <source>a message of %1 bytes</source>
        <translation>eine Nachricht von %1 Bytes</translation>
    </message>
    <message>
        <source>too much before the first message</source>
        <translation>zu viel vor der ersten Nachricht</translation>
    </message>
    <message>
        <source>exit status %1</source>
        <translation>Rückgabewert %1</translation>
    </message>
    <message>
        <source>signal %1</source>
        <translation>Signal %1</translation>
    </message>
    <message>
        <source>standard input is closed</source>
        <translation>die Standardeingabe ist geschlossen</translation>
    </message>
    <message>
        <source>standard output is closed</source>
        <translation>die Standardausgabe ist geschlossen</translation>
    </message>
    <message>
        <source>the display %1 cannot be used: nothing answers there, or this account may not use it</source>
        <translation>die Anzeige %1 ist nicht benutzbar: dort antwortet nichts, oder dieses Konto darf sie nicht benutzen</translation>
    </message>
    <message>
        <source>window %1: %2</source>
        <translation>Fenster %1: %2</translation>
    </message>
</context>
<context>
    <name>zoParaViewPicture</name>
    <message>
        <source>nothing was shown within %1 s</source>
        <translation>innerhalb von %1 s erschien nichts</translation>
    </message>
    <message>
        <source>A client wants the server: the check picture makes way</source>
        <translation>Ein Client möchte zum Server: Das Prüfbild macht ihm Platz</translation>
    </message>
    <message>
        <source>The check picture is gone: %1</source>
        <translation>Das Prüfbild ist weg: %1</translation>
    </message>
    <message>
        <source>%1 is not installed on this machine</source>
        <translation>%1 ist auf diesem Rechner nicht installiert</translation>
    </message>
    <message>
        <source>this machine has no X display, which %1 needs</source>
        <translation>dieser Rechner hat keinen X-Bildschirm, den %1 braucht</translation>
    </message>
    <message>
        <source>The check picture is on the wall</source>
        <translation>Das Prüfbild ist auf der Wand</translation>
    </message>
</context>
<context>
    <name>zoParaViewProbe</name>
    <message>
        <source>it does not answer</source>
        <translation>antwortet nicht</translation>
    </message>
    <message>
        <source>%1 does not tell its version</source>
        <translation>%1 nennt seine Version nicht</translation>
    </message>
    <message>
        <source>whether display %1 can be opened is not known: neither %2 nor xwininfo is there</source>
        <translation>ob sich der Bildschirm %1 öffnen lässt, ist unbekannt: weder %2 noch xwininfo ist dort</translation>
    </message>
    <message>
        <source>its display %1 cannot be opened</source>
        <translation>sein Bildschirm %1 lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>its display %1 cannot be opened: %2</source>
        <translation>sein Bildschirm %1 lässt sich nicht öffnen: %2</translation>
    </message>
    <message>
        <source>its folder %1 cannot be made: %2</source>
        <translation>sein Ordner %1 lässt sich nicht anlegen: %2</translation>
    </message>
    <message>
        <source>%1 cannot be brought there: %2</source>
        <translation>%1 lässt sich nicht dorthin bringen: %2</translation>
    </message>
</context>
<context>
    <name>zoParaViewService</name>
    <message>
        <source>ParaView&apos;s server did not come back</source>
        <translation>der ParaView-Server kam nicht wieder</translation>
    </message>
    <message>
        <source>ParaView&apos;s server is one job and does not pass the gateway %1</source>
        <translation>der ParaView-Server ist ein einziger Job und kommt nicht am Gateway %1 vorbei</translation>
    </message>
    <message>
        <source>no window of an enabled node shows a plane</source>
        <translation>kein Fenster eines aktiven Knotens zeigt eine Ebene</translation>
    </message>
    <message>
        <source>the folder of the session cannot be made in %1: %2</source>
        <translation>der Ordner der Sitzung lässt sich in %1 nicht anlegen: %2</translation>
    </message>
    <message>
        <source>aborted</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>Other hosts on this machine cannot be seen: %1</source>
        <translation>Andere Sitzungen auf diesem Rechner sind nicht zu erkennen: %1</translation>
    </message>
    <message>
        <source>Connected to %1</source>
        <translation>Verbunden mit %1</translation>
    </message>
    <message>
        <source>Connecting to %1 ...</source>
        <translation>Verbinden mit %1 ...</translation>
    </message>
    <message>
        <source>the nodes did not answer</source>
        <translation>die Knoten haben nicht geantwortet</translation>
    </message>
    <message>
        <source>Node %1: %2</source>
        <translation>Knoten %1: %2</translation>
    </message>
    <message>
        <source>Node %1 failed: %2</source>
        <translation>Knoten %1 fehlgeschlagen: %2</translation>
    </message>
    <message>
        <source>%1 cannot be used</source>
        <translation>%1 nicht nutzbar</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <translation>%1 auf %2</translation>
    </message>
    <message>
        <source>ParaView must be of one release on all nodes; there is %1</source>
        <translation>ParaView muss auf allen Knoten von einer Ausgabe sein; es gibt %1</translation>
    </message>
    <message>
        <source> and </source>
        <translation> und </translation>
    </message>
    <message>
        <source>ParaView&apos;s server starts on port %1 ...</source>
        <translation>ParaView-Server startet auf Port %1 ...</translation>
    </message>
    <message>
        <source>ParaView&apos;s server did not accept clients within %1 s</source>
        <translation>der ParaView-Server nahm binnen %1 s keine Clients an</translation>
    </message>
    <message>
        <source>ParaView&apos;s server waits for a client</source>
        <translation>ParaView-Server wartet auf einen Client</translation>
    </message>
    <message>
        <source>ParaView&apos;s server cannot read its file: %1</source>
        <translation>der ParaView-Server kann seine Datei nicht lesen: %1</translation>
    </message>
    <message>
        <source>ParaView&apos;s server ended: %1</source>
        <translation>der ParaView-Server endete: %1</translation>
    </message>
    <message>
        <source>ParaView&apos;s server ended on %1: %2</source>
        <translation>der ParaView-Server endete auf %1: %2</translation>
    </message>
    <message>
        <source>Port %1 is in use</source>
        <translation>Port %1 ist belegt</translation>
    </message>
    <message>
        <source>the ports %1 to %2 are in use</source>
        <translation>die Ports %1 bis %2 sind belegt</translation>
    </message>
    <message>
        <source>ParaView does not run on nodes that show nothing: %1</source>
        <translation>ParaView läuft nicht auf Knoten, die nichts zeigen: %1</translation>
    </message>
    <message>
        <source>Connect with ParaView %1: %2</source>
        <translation>Verbinden mit ParaView %1: %2</translation>
    </message>
    <message>
        <source>From other machines: ssh -L %1:localhost:%1 %2. The port is open on all addresses all the same; a firewall can close it.</source>
        <translation>Von anderen Rechnern: ssh -L %1:localhost:%1 %2. Der Port ist trotzdem auf allen Adressen offen; eine Firewall kann ihn schließen.</translation>
    </message>
    <message>
        <source>A client without the connect id was refused</source>
        <translation>Ein Client ohne die Verbindungskennung wurde abgewiesen</translation>
    </message>
    <message>
        <source>A client of ParaView is connected</source>
        <translation>Ein Client von ParaView ist verbunden</translation>
    </message>
    <message>
        <source>ParaView&apos;s server waits for a client: %1</source>
        <translation>ParaView-Server wartet auf einen Client: %1</translation>
    </message>
    <message>
        <source>The client of ParaView left</source>
        <translation>Der Client von ParaView hat sich getrennt</translation>
    </message>
    <message>
        <source>ParaView&apos;s server ended three times without a client: %1</source>
        <translation>der ParaView-Server endete dreimal ohne Client: %1</translation>
    </message>
    <message>
        <source>Node %1 lost: %2</source>
        <translation>Knoten %1 verloren: %2</translation>
    </message>
    <message>
        <source>Cluster session lost: %1</source>
        <translation>Cluster-Sitzung verloren: %1</translation>
    </message>
    <message>
        <source>Configuration of the running cluster refused: %1</source>
        <translation>Konfiguration des laufenden Clusters zurückgewiesen: %1</translation>
    </message>
    <message>
        <source>the eye separation</source>
        <translation>den Augenabstand</translation>
    </message>
    <message>
        <source>what %1 shows</source>
        <translation>die Anzeige von %1</translation>
    </message>
    <message>
        <source>Configuration of the running cluster refused: ParaView&apos;s server would have to start again for %1 (Restart session)</source>
        <translation>Konfiguration des laufenden Clusters zurückgewiesen: Für %1 müsste der ParaView-Server neu starten (Sitzung neu starten)</translation>
    </message>
    <message>
        <source>The check picture cannot be shown: %1</source>
        <translation>Das Prüfbild lässt sich nicht zeigen: %1</translation>
    </message>
    <message>
        <source>The check picture is off</source>
        <translation>Das Prüfbild ist aus</translation>
    </message>
    <message>
        <source>The check picture waits until the client of ParaView has left</source>
        <translation>Das Prüfbild wartet, bis der Client von ParaView sich getrennt hat</translation>
    </message>
    <message>
        <source>There is no check picture while the server calls its client</source>
        <translation>Es gibt kein Prüfbild, während der Server seinen Client ruft</translation>
    </message>
</context>
<context>
    <name>zoSessionRequest</name>
    <message>
        <source>no node</source>
        <translation>keinem Knoten</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 mehr</translation>
    </message>
</context>
<context>
    <name>zoSessionText</name>
    <message>
        <source>rehearsal of 1 node on this machine</source>
        <translation>Probe von 1 Knoten auf diesem Rechner</translation>
    </message>
    <message>
        <source>1 node</source>
        <translation>1 Knoten</translation>
    </message>
    <message>
        <source>rehearsal of %1 nodes on this machine</source>
        <translation>Probe von %1 Knoten auf diesem Rechner</translation>
    </message>
    <message>
        <source>%1 nodes</source>
        <translation>%1 Knoten</translation>
    </message>
    <message>
        <source>%1 on 1 node</source>
        <translation>%1 auf 1 Knoten</translation>
    </message>
    <message>
        <source>%1 on %2 nodes</source>
        <translation>%1 auf %2 Knoten</translation>
    </message>
    <message>
        <source>%1, rehearsed on this machine</source>
        <translation>%1, Probe auf diesem Rechner</translation>
    </message>
</context>
</TS>
