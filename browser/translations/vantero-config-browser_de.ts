<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QApplication</name>
    <message>
        <source>Camera Configurations</source>
        <translation>Kamerakonfigurationen</translation>
    </message>
    <message>
        <source>Shows, compares and edits the configurations of cameras, judges updates, and shows alarm lists.</source>
        <translation>Zeigt, vergleicht und bearbeitet die Konfigurationen von Kameras, beurteilt Updates und zeigt Alarmlisten.</translation>
    </message>
    <message>
        <source>Files, folders and archives to open.</source>
        <translation>Dateien, Ordner und Archive, die geöffnet werden.</translation>
    </message>
</context>
<context>
    <name>QDialog</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
</context>
<context>
    <name>QLabel</name>
    <message>
        <source>Original Order</source>
        <translation>Ursprüngliche Reihenfolge</translation>
    </message>
</context>
<context>
    <name>QMessageBox</name>
    <message>
        <source>About Camera Configurations</source>
        <translation>Über Kamerakonfigurationen</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Camera Configurations %1&lt;/h3&gt;&lt;p&gt;Shows, compares and edits the configurations of Vantero cameras, judges updates, and shows alarm lists.&lt;/p&gt;&lt;p&gt;Built with Qt %2, runs with Qt %3.&lt;/p&gt;&lt;p&gt;© 2026 The FileFormatsVantero authors, MIT licence.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Kamerakonfigurationen %1&lt;/h3&gt;&lt;p&gt;Zeigt, vergleicht und bearbeitet die Konfigurationen von Vantero-Kameras, beurteilt Updates und zeigt Alarmlisten.&lt;/p&gt;&lt;p&gt;Gebaut mit Qt %2, läuft mit Qt %3.&lt;/p&gt;&lt;p&gt;© 2026 The FileFormatsVantero authors, MIT-Lizenz.&lt;/p&gt;</translation>
    </message>
</context>
<context>
    <name>browser::AlarmList</name>
    <message>
        <source>line %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
</context>
<context>
    <name>browser::AlarmModel</name>
    <message>
        <source>item %1</source>
        <translation>Element %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>browser::AlarmPane</name>
    <message>
        <source>&amp;Text and findings</source>
        <translation>&amp;Text und Befunde</translation>
    </message>
    <message>
        <source>Alarm list</source>
        <translation>Alarmliste</translation>
    </message>
    <message>
        <source>Alarm list as a tree</source>
        <translation>Alarmliste als Baum</translation>
    </message>
    <message>
        <source>No alarm list</source>
        <translation>Keine Alarmliste</translation>
    </message>
    <message>
        <source>Open a file that ends with &quot;.alarms&quot;, or a folder that holds one.</source>
        <translation>Öffnen Sie eine Datei, die mit „.alarms“ endet, oder einen Ordner mit einer solchen.</translation>
    </message>
    <message>
        <source>No alarm list: %1, %2.</source>
        <translation>Keine Alarmliste: %1, %2.</translation>
    </message>
</context>
<context>
    <name>browser::ArchiveDialog</name>
    <message>
        <source>&amp;Encrypt it (AES-256)</source>
        <translation>&amp;Verschlüsseln (AES-256)</translation>
    </message>
    <message>
        <source>Archive of the Selected Cameras</source>
        <translation>Archiv der ausgewählten Kameras</translation>
    </message>
    <message>
        <source>&amp;Choose a File…</source>
        <translation>&amp;Datei wählen …</translation>
    </message>
    <message>
        <source>Configurations that go into it: %L1</source>
        <translation>Konfigurationen, die hineinkommen: %L1</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>&amp;Passwort:</translation>
    </message>
    <message>
        <source>&amp;Again:</source>
        <translation>&amp;Noch einmal:</translation>
    </message>
</context>
<context>
    <name>browser::BulkEditDialog</name>
    <message>
        <source>Change the Selected Cameras</source>
        <translation>Ausgewählte Kameras ändern</translation>
    </message>
    <message>
        <source>Set a value</source>
        <translation>Einen Wert setzen</translation>
    </message>
    <message>
        <source>Add a value</source>
        <translation>Einen Wert hinzufügen</translation>
    </message>
    <message>
        <source>Remove a key</source>
        <translation>Einen Schlüssel entfernen</translation>
    </message>
    <message>
        <source>What would change</source>
        <translation>Was sich ändern würde</translation>
    </message>
    <message>
        <source>C&amp;hange</source>
        <translation>Ä&amp;ndern</translation>
    </message>
    <message>
        <source>&amp;What to do:</source>
        <translation>&amp;Was zu tun ist:</translation>
    </message>
    <message>
        <source>&amp;Section:</source>
        <translation>&amp;Abschnitt:</translation>
    </message>
    <message>
        <source>&amp;Key:</source>
        <translation>&amp;Schlüssel:</translation>
    </message>
    <message>
        <source>&amp;Value:</source>
        <translation>W&amp;ert:</translation>
    </message>
    <message>
        <source>Enter a section and a key to see what would change.</source>
        <translation>Geben Sie Abschnitt und Schlüssel ein, um zu sehen, was sich ändern würde.</translation>
    </message>
    <message>
        <source>Looking…</source>
        <translation>Sehe nach …</translation>
    </message>
    <message>
        <source>Cameras that change: %L1. Cameras where it is not possible: %L2. Nothing is written before you save.</source>
        <translation>Kameras, die sich ändern: %L1. Kameras, bei denen es nicht geht: %L2. Geschrieben wird erst, wenn Sie speichern.</translation>
    </message>
</context>
<context>
    <name>browser::BulkEditModel</name>
    <message>
        <source>Change of %1 in several cameras</source>
        <translation>Änderung von %1 in mehreren Kameras</translation>
    </message>
    <message>
        <source>it cannot be edited</source>
        <translation>nicht zu bearbeiten</translation>
    </message>
    <message>
        <source>already so</source>
        <translation>schon so</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Nachher</translation>
    </message>
    <message>
        <source>Not changed, as</source>
        <translation>Nicht geändert, weil</translation>
    </message>
</context>
<context>
    <name>browser::CameraModel</name>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>%1 (edited)</source>
        <translation>%1 (bearbeitet)</translation>
    </message>
    <message>
        <source>Factory address</source>
        <translation>Werksadresse</translation>
    </message>
    <message>
        <source>Host name</source>
        <translation>Rechnername</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
</context>
<context>
    <name>browser::CamerasPane</name>
    <message>
        <source>Filter of the cameras</source>
        <translation>Filter der Kameras</translation>
    </message>
    <message>
        <source>Filter, or a value: NTP=10.14</source>
        <translation>Filter, oder ein Wert: NTP=10.14</translation>
    </message>
    <message>
        <source>A part of any column, or a value: NTP=10.14 finds cameras whose NTP holds that, NTP!=10.14 the others, ethernet/NTP= those that have it</source>
        <translation>Ein Teil einer Spalte, oder ein Wert: NTP=10.14 findet Kameras, deren NTP das enthält, NTP!=10.14 die anderen, ethernet/NTP= die, die es haben</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>No cameras yet</source>
        <translation>Noch keine Kameras</translation>
    </message>
    <message>
        <source>Open a folder, archives or files: press Ctrl+O or Ctrl+Shift+O, or drop them here.</source>
        <translation>Öffnen Sie einen Ordner, Archive oder Dateien: mit Strg+O oder Strg+Umschalt+O, oder ziehen Sie sie hierher.</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>Suche …</translation>
    </message>
    <message>
        <source>No camera is like that</source>
        <translation>Keine Kamera ist so</translation>
    </message>
    <message>
        <source>Change the filter, or clear it.</source>
        <translation>Ändern oder leeren Sie den Filter.</translation>
    </message>
</context>
<context>
    <name>browser::ComparedModel</name>
    <message>
        <source>same</source>
        <translation>gleich</translation>
    </message>
    <message>
        <source>different</source>
        <translation>verschieden</translation>
    </message>
    <message>
        <source>only in the first</source>
        <translation>nur im ersten</translation>
    </message>
    <message>
        <source>only in the second</source>
        <translation>nur im zweiten</translation>
    </message>
    <message>
        <source>Factory address</source>
        <translation>Werksadresse</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
</context>
<context>
    <name>browser::ConfigEdits</name>
    <message>
        <source>the name would be read otherwise</source>
        <translation>der Name würde anders gelesen</translation>
    </message>
    <message>
        <source>there is no such value</source>
        <translation>es gibt keinen solchen Wert</translation>
    </message>
    <message>
        <source>there is a key %1 already</source>
        <translation>es gibt schon einen Schlüssel %1</translation>
    </message>
    <message>
        <source>there is no such key</source>
        <translation>es gibt keinen solchen Schlüssel</translation>
    </message>
    <message>
        <source>there is a section %1 already</source>
        <translation>es gibt schon einen Abschnitt %1</translation>
    </message>
    <message>
        <source>there is no such section</source>
        <translation>es gibt keinen solchen Abschnitt</translation>
    </message>
</context>
<context>
    <name>browser::DifferenceModel</name>
    <message>
        <source>(missing)</source>
        <translation>(fehlt)</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Abschnitt</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
</context>
<context>
    <name>browser::DifferencesPane</name>
    <message>
        <source>Nothing to compare</source>
        <translation>Nichts zu vergleichen</translation>
    </message>
    <message>
        <source>Select two cameras on the left: hold Ctrl and click the second.</source>
        <translation>Wählen Sie links zwei Kameras: Strg halten und auf die zweite klicken.</translation>
    </message>
    <message>
        <source>No differences</source>
        <translation>Keine Unterschiede</translation>
    </message>
    <message>
        <source>Both cameras have the same values.</source>
        <translation>Beide Kameras haben dieselben Werte.</translation>
    </message>
    <message>
        <source>Selected cameras: %L1.</source>
        <translation>Ausgewählte Kameras: %L1.</translation>
    </message>
</context>
<context>
    <name>browser::DifferencesView</name>
    <message>
        <source>Differences</source>
        <translation>Unterschiede</translation>
    </message>
    <message>
        <source>Whole value of the first camera</source>
        <translation>Ganzer Wert der ersten Kamera</translation>
    </message>
    <message>
        <source>Whole value of the second camera</source>
        <translation>Ganzer Wert der zweiten Kamera</translation>
    </message>
    <message>
        <source>A&amp;ll keys</source>
        <translation>A&amp;lle Schlüssel</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Voriger</translation>
    </message>
    <message>
        <source>Shift+F8</source>
        <translation>Shift+F8</translation>
    </message>
    <message>
        <source>Previous difference (Shift+F8)</source>
        <translation>Voriger Unterschied (Umschalt+F8)</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Nächster</translation>
    </message>
    <message>
        <source>F8</source>
        <translation>F8</translation>
    </message>
    <message>
        <source>Next difference (F8)</source>
        <translation>Nächster Unterschied (F8)</translation>
    </message>
    <message>
        <source>Keys that differ: %L1</source>
        <translation>Verschiedene Schlüssel: %L1</translation>
    </message>
</context>
<context>
    <name>browser::Document</name>
    <message>
        <source>An entry of an archive cannot be edited. Save a copy of it to edit that.</source>
        <translation>Ein Eintrag eines Archivs lässt sich nicht bearbeiten. Speichern Sie eine Kopie, um die zu bearbeiten.</translation>
    </message>
    <message>
        <source>These are the settings in the comment of an image, which cannot be edited.</source>
        <translation>Dies sind die Einstellungen im Kommentar eines Bildes; sie lassen sich nicht bearbeiten.</translation>
    </message>
    <message>
        <source>Only the sections before an error could be read, so nothing can be edited: %1.</source>
        <translation>Nur die Abschnitte vor einem Fehler waren zu lesen, deshalb lässt sich nichts bearbeiten: %1.</translation>
    </message>
    <message>
        <source>Not changed: %1.</source>
        <translation>Nicht geändert: %1.</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>browser::EntryModel</name>
    <message>
        <source>(no values)</source>
        <translation>(keine Werte)</translation>
    </message>
    <message>
        <source>Change of %1</source>
        <translation>Änderung von %1</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Abschnitt</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>browser::FindingModel</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Schwere</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Finding</source>
        <translation>Befund</translation>
    </message>
</context>
<context>
    <name>browser::FindingsView</name>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Place of the finding</source>
        <translation>Ort des Befundes</translation>
    </message>
    <message>
        <source>Findings</source>
        <translation>Befunde</translation>
    </message>
    <message>
        <source>Findings: %1</source>
        <translation>Befunde: %1</translation>
    </message>
    <message>
        <source>Whole finding</source>
        <translation>Ganzer Befund</translation>
    </message>
</context>
<context>
    <name>browser::FolderDialog</name>
    <message>
        <source>C&amp;ompare</source>
        <translation>Verglei&amp;chen</translation>
    </message>
    <message>
        <source>Compare Two Folders</source>
        <translation>Zwei Ordner vergleichen</translation>
    </message>
    <message>
        <source>Cameras of both folders</source>
        <translation>Kameras beider Ordner</translation>
    </message>
    <message>
        <source>&amp;First folder:</source>
        <translation>&amp;Erster Ordner:</translation>
    </message>
    <message>
        <source>&amp;Second folder:</source>
        <translation>&amp;Zweiter Ordner:</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>Choose a Folder</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation>Lese …</translation>
    </message>
    <message>
        <source>Different: %L1. Only in the first: %L2. Only in the second: %L3. Same: %L4.</source>
        <translation>Verschieden: %L1. Nur im ersten: %L2. Nur im zweiten: %L3. Gleich: %L4.</translation>
    </message>
    <message>
        <source> Left out, as they have no address or another of it came later: %L1. Could not be read: %L2.</source>
        <translation> Ausgelassen, weil ohne Adresse oder von einer späteren derselben Adresse ersetzt: %L1. Nicht zu lesen: %L2.</translation>
    </message>
    <message>
        <source>First</source>
        <translation>Erste</translation>
    </message>
    <message>
        <source>Second</source>
        <translation>Zweite</translation>
    </message>
</context>
<context>
    <name>browser::Loader</name>
    <message>
        <source>No such file or directory</source>
        <translation>Datei oder Verzeichnis nicht gefunden</translation>
    </message>
    <message>
        <source>neither a file nor a folder</source>
        <translation>weder Datei noch Ordner</translation>
    </message>
    <message>
        <source>the folder cannot be read</source>
        <translation>der Ordner ist nicht zu lesen</translation>
    </message>
    <message>
        <source>no configuration: the first two lines do not tell the versions</source>
        <translation>keine Konfiguration: die ersten zwei Zeilen nennen die Versionen nicht</translation>
    </message>
</context>
<context>
    <name>browser::MainWindow</name>
    <message>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Differences</source>
        <translation>Unterschiede</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Update</translation>
    </message>
    <message>
        <source>Alarm list</source>
        <translation>Alarmliste</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>Lade …</translation>
    </message>
    <message>
        <source>Stopped. Configurations so far: %L1</source>
        <translation>Angehalten. Konfigurationen bis dahin: %L1</translation>
    </message>
    <message>
        <source>Configurations: %L1</source>
        <translation>Konfigurationen: %L1</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open Files…</source>
        <translation>Dateien ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Open &amp;Folder…</source>
        <translation>&amp;Ordner öffnen …</translation>
    </message>
    <message>
        <source>Ctrl+Shift+O</source>
        <translation>Ctrl+Shift+O</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save A&amp;ll</source>
        <translation>A&amp;lle speichern</translation>
    </message>
    <message>
        <source>Ctrl+Alt+S</source>
        <translation>Ctrl+Alt+S</translation>
    </message>
    <message>
        <source>Save a &amp;Copy…</source>
        <translation>&amp;Kopie speichern …</translation>
    </message>
    <message>
        <source>Ctrl+Shift+S</source>
        <translation>Ctrl+Shift+S</translation>
    </message>
    <message>
        <source>R&amp;eload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>Reads the file anew and drops what was edited</source>
        <translation>Liest die Datei neu und verwirft, was bearbeitet wurde</translation>
    </message>
    <message>
        <source>Compare &amp;Two Folders…</source>
        <translation>Z&amp;wei Ordner vergleichen …</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>Export Ca&amp;meras as CSV…</source>
        <translation>Ka&amp;meras als CSV exportieren …</translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation>Ctrl+E</translation>
    </message>
    <message>
        <source>E&amp;xport the Shown Table as CSV…</source>
        <translation>Gezeigte &amp;Tabelle als CSV exportieren …</translation>
    </message>
    <message>
        <source>Ctrl+Shift+E</source>
        <translation>Ctrl+Shift+E</translation>
    </message>
    <message>
        <source>Archive of the Selected Cameras…</source>
        <translation>Archiv der ausgewählten Kameras …</translation>
    </message>
    <message>
        <source>Ctrl+Shift+A</source>
        <translation>Ctrl+Shift+A</translation>
    </message>
    <message>
        <source>Close &amp;All</source>
        <translation>&amp;Alle schließen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+W</source>
        <translation>Ctrl+Shift+W</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Nothing yet</source>
        <translation>Noch nichts</translation>
    </message>
    <message>
        <source>&amp;Forget Them</source>
        <translation>&amp;Vergessen</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+Z</source>
        <translation>Ctrl+Shift+Z</translation>
    </message>
    <message>
        <source>Change the Selected Ca&amp;meras…</source>
        <translation>Ausgewählte Ka&amp;meras ändern …</translation>
    </message>
    <message>
        <source>Ctrl+B</source>
        <translation>Ctrl+B</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Filter the &amp;Cameras</source>
        <translation>&amp;Kameras filtern</translation>
    </message>
    <message>
        <source>Ctrl+Shift+F</source>
        <translation>Ctrl+Shift+F</translation>
    </message>
    <message>
        <source>&amp;Filter the Values</source>
        <translation>Werte &amp;filtern</translation>
    </message>
    <message>
        <source>&amp;Stop Loading</source>
        <translation>Laden an&amp;halten</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>&amp;Tastenkürzel</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>Über &amp;Qt</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Progress of loading</source>
        <translation>Fortschritt des Ladens</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stop loading (Esc); what was read stays</source>
        <translation>Laden anhalten (Esc); was gelesen ist, bleibt</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Open Configurations, Archives, Images and Alarm Lists</source>
        <translation>Konfigurationen, Archive, Bilder und Alarmlisten öffnen</translation>
    </message>
    <message>
        <source>Configurations, archives, images, alarm lists (*.cfg *.zip *.jpg *.jpeg *.alarms);;All files (*)</source>
        <translation>Konfigurationen, Archive, Bilder, Alarmlisten (*.cfg *.zip *.jpg *.jpeg *.alarms);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Open All Configurations of a Folder</source>
        <translation>Alle Konfigurationen eines Ordners öffnen</translation>
    </message>
    <message>
        <source>not saved: %1</source>
        <translation>nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>Saved: %L1</source>
        <translation>Gespeichert: %L1</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 gespeichert</translation>
    </message>
    <message>
        <source>Not saved. %1</source>
        <translation>Nicht gespeichert. %1</translation>
    </message>
    <message>
        <source>Save a Copy</source>
        <translation>Kopie speichern</translation>
    </message>
    <message>
        <source>Configurations (*.cfg);;All files (*)</source>
        <translation>Konfigurationen (*.cfg);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Saved a copy as %1</source>
        <translation>Als %1 gespeichert</translation>
    </message>
    <message>
        <source>No copy was saved. %1</source>
        <translation>Keine Kopie gespeichert. %1</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>Drop what was edited in %1?</source>
        <translation>Verwerfen, was in %1 bearbeitet wurde?</translation>
    </message>
    <message>
        <source>Reloaded %1</source>
        <translation>%1 neu geladen</translation>
    </message>
    <message>
        <source>Not reloaded. %1</source>
        <translation>Nicht neu geladen. %1</translation>
    </message>
    <message>
        <source>and others: %L1</source>
        <translation>und andere: %L1</translation>
    </message>
    <message>
        <source>Edited Configurations</source>
        <translation>Bearbeitete Konfigurationen</translation>
    </message>
    <message>
        <source>Save what was edited?</source>
        <translation>Speichern, was bearbeitet wurde?</translation>
    </message>
    <message>
        <source>Changed, not saved yet: %L1</source>
        <translation>Geändert, noch nicht gespeichert: %L1</translation>
    </message>
    <message>
        <source>There is no table to export</source>
        <translation>Es gibt keine Tabelle zu exportieren</translation>
    </message>
    <message>
        <source>Export as CSV</source>
        <translation>Als CSV exportieren</translation>
    </message>
    <message>
        <source>CSV tables (*.csv);;All files (*)</source>
        <translation>CSV-Tabellen (*.csv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Exported rows: %L1</source>
        <translation>Exportierte Zeilen: %L1</translation>
    </message>
    <message>
        <source>not exported: %1</source>
        <translation>nicht exportiert: %1</translation>
    </message>
    <message>
        <source>Archive of the Selected Cameras</source>
        <translation>Archiv der ausgewählten Kameras</translation>
    </message>
    <message>
        <source>Archives (*.zip);;All files (*)</source>
        <translation>Archive (*.zip);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Writing the archive…</source>
        <translation>Schreibe das Archiv …</translation>
    </message>
    <message>
        <source>not written: %1</source>
        <translation>nicht geschrieben: %1</translation>
    </message>
    <message>
        <source>Stopped. There is no archive</source>
        <translation>Angehalten. Es gibt kein Archiv</translation>
    </message>
    <message>
        <source>Put into %1: %L2</source>
        <translation>In %1: %L2</translation>
    </message>
    <message>
        <source>written, but %1</source>
        <translation>geschrieben, aber %1</translation>
    </message>
</context>
<context>
    <name>browser::MessageBar</name>
    <message>
        <source>Close the message</source>
        <translation>Meldung schließen</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
</context>
<context>
    <name>browser::PasswordDialog</name>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>The archive &lt;b&gt;%1&lt;/b&gt; is encrypted.</source>
        <translation>Das Archiv &lt;b&gt;%1&lt;/b&gt; ist verschlüsselt.</translation>
    </message>
    <message>
        <source>That was not its password, or the archive is damaged.</source>
        <translation>Das war nicht sein Passwort, oder das Archiv ist beschädigt.</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>&amp;Passwort:</translation>
    </message>
    <message>
        <source>&amp;Show the password</source>
        <translation>Passwort &amp;zeigen</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Öffnen</translation>
    </message>
    <message>
        <source>S&amp;kip the Archive</source>
        <translation>Archiv ü&amp;berspringen</translation>
    </message>
</context>
<context>
    <name>browser::ProblemModel</name>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
</context>
<context>
    <name>browser::ProblemsPane</name>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
    <message>
        <source>Problems: %1</source>
        <translation>Probleme: %1</translation>
    </message>
</context>
<context>
    <name>browser::RowCounts</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1, %2 selected</source>
        <translation>%1, %2 ausgewählt</translation>
    </message>
</context>
<context>
    <name>browser::SafeSave</name>
    <message>
        <source>The file has changed on the disk since it was read. Reload it, or save a copy of what you have.</source>
        <translation>Die Datei auf der Platte hat sich geändert, seit sie gelesen wurde. Laden Sie sie neu, oder speichern Sie eine Kopie Ihres Standes.</translation>
    </message>
    <message>
        <source>The file is Latin-1, which cannot hold all of the text. Save a copy, which will be UTF-8.</source>
        <translation>Die Datei ist in Latin-1, das nicht den ganzen Text fassen kann. Speichern Sie eine Kopie; sie wird UTF-8.</translation>
    </message>
</context>
<context>
    <name>browser::StartPage</name>
    <message>
        <source>Opened before</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Look into the configurations of cameras</source>
        <translation>In die Konfigurationen von Kameras sehen</translation>
    </message>
    <message>
        <source>Open configurations, archives, camera images and alarm lists, or a folder with all that is in it.</source>
        <translation>Öffnen Sie Konfigurationen, Archive, Kamerabilder und Alarmlisten oder einen Ordner mit allem, was darin ist.</translation>
    </message>
    <message>
        <source>Or drop files and folders here.</source>
        <translation>Oder ziehen Sie Dateien und Ordner hierher.</translation>
    </message>
    <message>
        <source>Open %1</source>
        <translation>%1 öffnen</translation>
    </message>
</context>
<context>
    <name>browser::TextPane</name>
    <message>
        <source>No camera selected</source>
        <translation>Keine Kamera ausgewählt</translation>
    </message>
    <message>
        <source>Select a camera on the left to see its text and what is found in it.</source>
        <translation>Wählen Sie links eine Kamera, um ihren Text zu sehen und was darin gefunden wird.</translation>
    </message>
    <message>
        <source>Nothing is wrong with this text.</source>
        <translation>An diesem Text ist nichts falsch.</translation>
    </message>
</context>
<context>
    <name>browser::UpdateModel</name>
    <message>
        <source>Double-click to enter the model: no configuration tells it</source>
        <translation>Doppelklicken, um das Modell einzugeben: keine Konfiguration nennt es</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>Factory address</source>
        <translation>Werksadresse</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>Urteil</translation>
    </message>
    <message>
        <source>Why</source>
        <translation>Warum</translation>
    </message>
</context>
<context>
    <name>browser::UpdatePane</name>
    <message>
        <source>Verdicts for all cameras</source>
        <translation>Urteile für alle Kameras</translation>
    </message>
    <message>
        <source>A version, such as VN-3.0.6.29</source>
        <translation>Eine Version, etwa VN-3.0.6.29</translation>
    </message>
    <message>
        <source>Update to &amp;version:</source>
        <translation>Update auf &amp;Version:</translation>
    </message>
    <message>
        <source>From &amp;package…</source>
        <translation>Aus &amp;Paket …</translation>
    </message>
    <message>
        <source>Take the version that a firmware package names</source>
        <translation>Die Version nehmen, die ein Firmwarepaket nennt</translation>
    </message>
    <message>
        <source>Models from &amp;CSV…</source>
        <translation>Modelle aus &amp;CSV …</translation>
    </message>
    <message>
        <source>Take models from a table with the columns address and model</source>
        <translation>Modelle aus einer Tabelle mit den Spalten Adresse und Modell nehmen</translation>
    </message>
    <message>
        <source>Verdict for the selected camera</source>
        <translation>Urteil für die ausgewählte Kamera</translation>
    </message>
    <message>
        <source>%1 cannot be read, or names no version.</source>
        <translation>%1 ist nicht zu lesen oder nennt keine Version.</translation>
    </message>
    <message>
        <source>%1 has no line with an address and a model.</source>
        <translation>%1 hat keine Zeile mit Adresse und Modell.</translation>
    </message>
    <message>
        <source>Models that were read: %L1</source>
        <translation>Gelesene Modelle: %L1</translation>
    </message>
    <message>
        <source>Take the Versions of Firmware Packages</source>
        <translation>Versionen von Firmwarepaketen nehmen</translation>
    </message>
    <message>
        <source>Firmware packages (*.fwp);;All files (*)</source>
        <translation>Firmwarepakete (*.fwp);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Take the Models of a Table</source>
        <translation>Modelle einer Tabelle nehmen</translation>
    </message>
    <message>
        <source>CSV tables (*.csv *.txt);;All files (*)</source>
        <translation>CSV-Tabellen (*.csv *.txt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>No cameras to judge</source>
        <translation>Keine Kameras zu beurteilen</translation>
    </message>
    <message>
        <source>Open configurations, then choose a version to update them to.</source>
        <translation>Öffnen Sie Konfigurationen und wählen Sie dann eine Version für das Update.</translation>
    </message>
    <message>
        <source>%1: %2 → %3</source>
        <translation>%1: %2 → %3</translation>
    </message>
    <message>
        <source>%1, %2. %3 (rule &quot;%4&quot;).</source>
        <translation>%1, %2. %3 (Regel „%4“).</translation>
    </message>
    <message>
        <source>Versions at hand: %1</source>
        <translation>Vorhandene Versionen: %1</translation>
    </message>
    <message>
        <source>The same update for all cameras. No update is safe without a model: double-click one, or press F2, to enter it.</source>
        <translation>Dasselbe Update für alle Kameras. Ohne Modell ist kein Update sicher: Doppelklick oder F2, um eines einzugeben.</translation>
    </message>
    <message>
        <source>The same update for the selected cameras. No update is safe without a model: double-click one, or press F2, to enter it.</source>
        <translation>Dasselbe Update für die ausgewählten Kameras. Ohne Modell ist kein Update sicher: Doppelklick oder F2, um eines einzugeben.</translation>
    </message>
    <message>
        <source>Enter the Model</source>
        <translation>Modell eingeben</translation>
    </message>
</context>
<context>
    <name>browser::UpdateVerdict</name>
    <message>
        <source>Way out: install in this order: %1.</source>
        <translation>Ausweg: in dieser Reihenfolge installieren: %1.</translation>
    </message>
    <message>
        <source>Way out: install %1 first (%2).</source>
        <translation>Ausweg: zuerst %1 installieren (%2).</translation>
    </message>
    <message>
        <source>No other version leads there; the camera takes %1.</source>
        <translation>Keine andere Version führt dorthin; die Kamera nimmt %1.</translation>
    </message>
    <message>
        <source>Safe</source>
        <translation>Sicher</translation>
    </message>
    <message>
        <source>Not safe</source>
        <translation>Nicht sicher</translation>
    </message>
    <message>
        <source>Depends on the model</source>
        <translation>Vom Modell abhängig</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>The configuration does not tell the firmware</source>
        <translation>Die Konfiguration nennt die Firmware nicht</translation>
    </message>
    <message>
        <source>Choose a version</source>
        <translation>Wählen Sie eine Version</translation>
    </message>
    <message>
        <source>upgrade</source>
        <translation>Aktualisierung</translation>
    </message>
    <message>
        <source>downgrade</source>
        <translation>Rückschritt</translation>
    </message>
    <message>
        <source>same version</source>
        <translation>gleiche Version</translation>
    </message>
    <message>
        <source>No rule forbids it; enter the model to be sure</source>
        <translation>Keine Regel verbietet es; geben Sie das Modell ein, um sicher zu sein</translation>
    </message>
    <message>
        <source>%1. No rule names the model %2: those for other models hold</source>
        <translation>%1. Keine Regel nennt das Modell %2: es gelten die für andere Modelle</translation>
    </message>
</context>
<context>
    <name>browser::ValueDialog</name>
    <message>
        <source>Add a Value</source>
        <translation>Wert hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Section:</source>
        <translation>&amp;Abschnitt:</translation>
    </message>
    <message>
        <source>&amp;Key:</source>
        <translation>&amp;Schlüssel:</translation>
    </message>
    <message>
        <source>&amp;Value:</source>
        <translation>W&amp;ert:</translation>
    </message>
</context>
<context>
    <name>browser::ValueEditing</name>
    <message>
        <source>&amp;Add a Value…</source>
        <translation>Wert &amp;hinzufügen …</translation>
    </message>
    <message>
        <source>Remove the &amp;Values</source>
        <translation>&amp;Werte entfernen</translation>
    </message>
    <message>
        <source>Rename the &amp;Key…</source>
        <translation>&amp;Schlüssel umbenennen …</translation>
    </message>
    <message>
        <source>Shift+F2</source>
        <translation>Shift+F2</translation>
    </message>
    <message>
        <source>Move Value &amp;Up</source>
        <translation>Wert nach &amp;oben</translation>
    </message>
    <message>
        <source>Alt+Up</source>
        <translation>Alt+Up</translation>
    </message>
    <message>
        <source>Move Value &amp;Down</source>
        <translation>Wert nach &amp;unten</translation>
    </message>
    <message>
        <source>Alt+Down</source>
        <translation>Alt+Down</translation>
    </message>
    <message>
        <source>Exchanges the value with the one before it of the same key</source>
        <translation>Tauscht den Wert mit dem vorigen desselben Schlüssels</translation>
    </message>
    <message>
        <source>Exchanges the value with the next one of the same key</source>
        <translation>Tauscht den Wert mit dem nächsten desselben Schlüssels</translation>
    </message>
    <message>
        <source>Add a &amp;Section…</source>
        <translation>&amp;Abschnitt hinzufügen …</translation>
    </message>
    <message>
        <source>Rename the S&amp;ection…</source>
        <translation>A&amp;bschnitt umbenennen …</translation>
    </message>
    <message>
        <source>Remove the Se&amp;ction</source>
        <translation>Abs&amp;chnitt entfernen</translation>
    </message>
    <message>
        <source>New value of %1</source>
        <translation>Neuer Wert von %1</translation>
    </message>
    <message>
        <source>Removal of %1</source>
        <translation>Entfernen von %1</translation>
    </message>
    <message>
        <source>Removal of values: %1</source>
        <translation>Entfernen von Werten: %1</translation>
    </message>
    <message>
        <source>Rename the Key</source>
        <translation>Schlüssel umbenennen</translation>
    </message>
    <message>
        <source>New name of %1:</source>
        <translation>Neuer Name von %1:</translation>
    </message>
    <message>
        <source>Rename of %1</source>
        <translation>Umbenennung von %1</translation>
    </message>
    <message>
        <source>Move of a value of %1</source>
        <translation>Verschieben eines Wertes von %1</translation>
    </message>
    <message>
        <source>Add a Section</source>
        <translation>Abschnitt hinzufügen</translation>
    </message>
    <message>
        <source>Name of the section:</source>
        <translation>Name des Abschnitts:</translation>
    </message>
    <message>
        <source>New section %1</source>
        <translation>Neuer Abschnitt %1</translation>
    </message>
    <message>
        <source>Rename the Section</source>
        <translation>Abschnitt umbenennen</translation>
    </message>
    <message>
        <source>&amp;Edit the Value</source>
        <translation>Wert bearbei&amp;ten</translation>
    </message>
</context>
<context>
    <name>browser::ValuesPane</name>
    <message>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>Filter of the values</source>
        <translation>Filter der Werte</translation>
    </message>
    <message>
        <source>Filter (Ctrl+F)</source>
        <translation>Filter (Strg+F)</translation>
    </message>
    <message>
        <source>What is filtered</source>
        <translation>Was gefiltert wird</translation>
    </message>
    <message>
        <source>Everywhere</source>
        <translation>Überall</translation>
    </message>
    <message>
        <source>In sections</source>
        <translation>In Abschnitten</translation>
    </message>
    <message>
        <source>In keys</source>
        <translation>In Schlüsseln</translation>
    </message>
    <message>
        <source>In values</source>
        <translation>In Werten</translation>
    </message>
    <message>
        <source>No camera selected</source>
        <translation>Keine Kamera ausgewählt</translation>
    </message>
    <message>
        <source>Select a camera on the left to see and edit its values.</source>
        <translation>Wählen Sie links eine Kamera, um ihre Werte zu sehen und zu bearbeiten.</translation>
    </message>
    <message>
        <source>%1 – edited</source>
        <translation>%1 – bearbeitet</translation>
    </message>
    <message>
        <source>Another program has changed the file.</source>
        <translation>Ein anderes Programm hat die Datei geändert.</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>The file is no longer there, or cannot be read.</source>
        <translation>Die Datei ist nicht mehr da oder nicht zu lesen.</translation>
    </message>
    <message>
        <source>One of the selected cameras: %L1. Ctrl+B changes all of them.</source>
        <translation>Eine der ausgewählten Kameras: %L1. Strg+B ändert alle.</translation>
    </message>
</context>
</TS>
