<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>DetailsPane</name>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Chapters and clips</source>
        <translation>Kapitel und Clips</translation>
    </message>
    <message>
        <source>Facts</source>
        <translation>Angaben</translation>
    </message>
    <message>
        <source>Select an item to see what is in it.</source>
        <translation>Wählen Sie einen Eintrag aus, um zu sehen, was darin steckt.</translation>
    </message>
</context>
<context>
    <name>DetailsText</name>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>Shown as</source>
        <translation>Seitenverhältnis</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>File size</source>
        <translation>Dateigröße</translation>
    </message>
    <message>
        <source>Protection</source>
        <translation>Schutz</translation>
    </message>
    <message>
        <source>scrambled</source>
        <translation>verschlüsselt</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Begins at</source>
        <translation>Beginnt bei</translation>
    </message>
    <message>
        <source>Chapters</source>
        <translation>Kapitel</translation>
    </message>
    <message>
        <source>Clips</source>
        <translation>Clips</translation>
    </message>
    <message>
        <source>Disc</source>
        <translation>Disc</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Sonstiges</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Subtitle</source>
        <translation>Untertitel</translation>
    </message>
    <message numerus="yes">
        <source>%n channel(s)</source>
        <translation>
            <numerusform>%n Kanal</numerusform>
            <numerusform>%n Kanäle</numerusform>
        </translation>
    </message>
    <message>
        <source>Streams</source>
        <translation>Datenströme</translation>
    </message>
    <message>
        <source>Id</source>
        <translation>Kennung</translation>
    </message>
    <message>
        <source>Codec</source>
        <translation>Codec</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Tags</source>
        <translation>Tags</translation>
    </message>
    <message>
        <source>Subtitles</source>
        <translation>Untertitel</translation>
    </message>
    <message numerus="yes">
        <source>%n chapter(s)</source>
        <translation>
            <numerusform>%n Kapitel</numerusform>
            <numerusform>%n Kapitel</numerusform>
        </translation>
    </message>
    <message>
        <source>Titles</source>
        <translation>Titel</translation>
    </message>
    <message numerus="yes">
        <source>%n clip(s)</source>
        <translation>
            <numerusform>%n Clip</numerusform>
            <numerusform>%n Clips</numerusform>
        </translation>
    </message>
    <message>
        <source>Stream files</source>
        <translation>Stream-Dateien</translation>
    </message>
    <message numerus="yes">
        <source>… and %n more</source>
        <translation>
            <numerusform>… und %n weiterer</numerusform>
            <numerusform>… und %n weitere</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FailureBar</name>
    <message>
        <source>&amp;Try Again</source>
        <translation>E&amp;rneut versuchen</translation>
    </message>
    <message>
        <source>Save &amp;Report…</source>
        <translation>Bericht s&amp;peichern…</translation>
    </message>
    <message>
        <source>Forget what could not be imported</source>
        <translation>Liste der nicht importierten Quellen verwerfen</translation>
    </message>
    <message>
        <source>Saves the errors for those who look into them; the command-line program shows them with “vspimport report”</source>
        <translation>Speichert die Fehler für alle, die sie untersuchen; das Kommandozeilenprogramm zeigt sie mit „vspimport report“ an</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>Shows each with the reason</source>
        <translation>Zeigt alle mit ihrem Grund an</translation>
    </message>
    <message>
        <source>What could not be imported</source>
        <translation>Was nicht importiert werden konnte</translation>
    </message>
    <message numerus="yes">
        <source>%n could not be imported.</source>
        <translation>
            <numerusform>%n Quelle konnte nicht importiert werden.</numerusform>
            <numerusform>%n Quellen konnten nicht importiert werden.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FailureModel</name>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
</context>
<context>
    <name>ImportBar</name>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Stopp</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Ends the import; what has been found stays</source>
        <translation>Beendet den Import; was gefunden wurde, bleibt erhalten</translation>
    </message>
    <message numerus="yes">
        <source>%n of other kinds passed over</source>
        <translation>
            <numerusform>%n Datei anderer Art übergangen</numerusform>
            <numerusform>%n Dateien anderer Art übergangen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 imported of %2 found</source>
        <translation>%1 von %2 gefundenen importiert</translation>
    </message>
    <message>
        <source>%1 pictures taken of %2</source>
        <translation>%1 von %2 Bildern aufgenommen</translation>
    </message>
</context>
<context>
    <name>ItemParts</name>
    <message>
        <source>Title %1 (main title)</source>
        <translation>Titel %1 (Haupttitel)</translation>
    </message>
    <message>
        <source>Title %1</source>
        <translation>Titel %1</translation>
    </message>
    <message>
        <source>Stream file</source>
        <translation>Stream-Datei</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Chapter %1</source>
        <translation>Kapitel %1</translation>
    </message>
    <message>
        <source>Clip %1</source>
        <translation>Clip %1</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Blu-ray</source>
        <translation>Blu-ray</translation>
    </message>
    <message>
        <source>DVD</source>
        <translation>DVD</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>Video</translation>
    </message>
</context>
<context>
    <name>LibraryModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Codecs</source>
        <translation>Codecs</translation>
    </message>
    <message>
        <source>Languages</source>
        <translation>Sprachen</translation>
    </message>
    <message>
        <source>File size</source>
        <translation>Dateigröße</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
</context>
<context>
    <name>LibraryView</name>
    <message>
        <source>Items</source>
        <translation>Einträge</translation>
    </message>
</context>
<context>
    <name>ListFile</name>
    <message>
        <source>it is no list of paths</source>
        <translation>es ist keine Liste von Pfaden</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Shows only items of one kind</source>
        <translation>Zeigt nur Einträge einer Art</translation>
    </message>
    <message>
        <source>All kinds</source>
        <translation>Alle Arten</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Shows only items in whose facts all of these words are</source>
        <translation>Zeigt nur Einträge, in deren Angaben alle diese Wörter vorkommen</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Open Disc</source>
        <translation>Disc öffnen</translation>
    </message>
    <message>
        <source>Export as JSON</source>
        <translation>Als JSON exportieren</translation>
    </message>
    <message>
        <source>Export as CSV</source>
        <translation>Als CSV exportieren</translation>
    </message>
    <message>
        <source>Export as Page</source>
        <translation>Als Seite exportieren</translation>
    </message>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>%1 was not written: %2</source>
        <translation>%1 wurde nicht geschrieben: %2</translation>
    </message>
    <message>
        <source>Open Files</source>
        <translation>Dateien öffnen</translation>
    </message>
    <message>
        <source>Open List</source>
        <translation>Liste öffnen</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>Save List</source>
        <translation>Liste speichern</translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n item(s) — vspimport</source>
        <translation>
            <numerusform>%1 von %n Eintrag — vspimport</numerusform>
            <numerusform>%1 von %n Einträgen — vspimport</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) — vspimport</source>
        <translation>
            <numerusform>%n Eintrag — vspimport</numerusform>
            <numerusform>%n Einträge — vspimport</numerusform>
        </translation>
    </message>
    <message>
        <source>About vspimport</source>
        <translation>Über vspimport</translation>
    </message>
    <message>
        <source>&lt;h3&gt;vspimport %1&lt;/h3&gt;&lt;p&gt;Shows what is in media files, DVDs and Blu-ray discs.&lt;/p&gt;&lt;p&gt;Qt %2, built with %3&lt;/p&gt;&lt;p&gt;The window is free software under the GNU General Public License, version 2 or later; the import module under the Lesser one, version 2.1 or later.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;vspimport %1&lt;/h3&gt;&lt;p&gt;Zeigt, was in Mediendateien, DVDs und Blu-ray-Discs steckt.&lt;/p&gt;&lt;p&gt;Qt %2, gebaut mit %3&lt;/p&gt;&lt;p&gt;Das Fenster ist freie Software unter der GNU General Public License, Version 2 oder neuer; das Importmodul unter der GNU Lesser General Public License, Version 2.1 oder neuer.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>vspimport</source>
        <translation>vspimport</translation>
    </message>
</context>
<context>
    <name>Page</name>
    <message>
        <source>1 item</source>
        <translation>1 Eintrag</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 Einträge</translation>
    </message>
    <message>
        <source>1 could not be imported</source>
        <translation>1 konnte nicht importiert werden</translation>
    </message>
    <message>
        <source>%1 could not be imported</source>
        <translation>%1 konnten nicht importiert werden</translation>
    </message>
    <message>
        <source>en</source>
        <comment>the code of the language of these texts, as in lang=&quot;en&quot;</comment>
        <translation>de</translation>
    </message>
    <message>
        <source>Films, music and discs</source>
        <translation>Filme, Musik und Discs</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>items that are left by the filter</comment>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Name, folder, codec, language, tag …</source>
        <translation>Name, Ordner, Codec, Sprache, Tag …</translation>
    </message>
    <message>
        <source>The import was stopped before it was over: there may be more.</source>
        <translation>Der Import wurde vorzeitig angehalten: Es gibt vielleicht noch mehr.</translation>
    </message>
    <message>
        <source>Not imported</source>
        <translation>Nicht importiert</translation>
    </message>
    <message>
        <source>No item has these words.</source>
        <translation>Kein Eintrag enthält diese Wörter.</translation>
    </message>
    <message>
        <source>1 chapter</source>
        <translation>1 Kapitel</translation>
    </message>
    <message>
        <source>%1 chapters</source>
        <translation>%1 Kapitel</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Blu-ray disc</source>
        <translation>Blu-ray-Disc</translation>
    </message>
    <message>
        <source>DVD</source>
        <translation>DVD</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>Picture of %1</source>
        <translation>Bild von %1</translation>
    </message>
    <message>
        <source>No picture</source>
        <translation>Kein Bild</translation>
    </message>
    <message>
        <source>scrambled</source>
        <translation>verschlüsselt</translation>
    </message>
    <message>
        <source>… and %1 more titles</source>
        <translation>… und %1 weitere Titel</translation>
    </message>
    <message>
        <source>Codecs:</source>
        <translation>Codecs:</translation>
    </message>
    <message>
        <source>Languages:</source>
        <translation>Sprachen:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Tags (%1)</source>
        <translation>Tags (%1)</translation>
    </message>
    <message>
        <source>Chapter %1</source>
        <translation>Kapitel %1</translation>
    </message>
    <message>
        <source>1 clip</source>
        <translation>1 Clip</translation>
    </message>
    <message>
        <source>%1 clips</source>
        <translation>%1 Clips</translation>
    </message>
    <message>
        <source>Clip %1</source>
        <translation>Clip %1</translation>
    </message>
    <message>
        <source>Title %1</source>
        <translation>Titel %1</translation>
    </message>
    <message>
        <source>Main title</source>
        <translation>Haupttitel</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… und %1 weitere</translation>
    </message>
    <message>
        <source>As above</source>
        <translation>Wie oben</translation>
    </message>
</context>
<context>
    <name>Program</name>
    <message>
        <source>Shows what is in media files, folders, disc images, DVDs and Blu-ray discs.</source>
        <translation>Zeigt, was in Mediendateien, Ordnern, Disc-Abbildern, DVDs und Blu-ray-Discs steckt.</translation>
    </message>
    <message>
        <source>What to import.</source>
        <translation>Was importiert werden soll.</translation>
    </message>
    <message>
        <source>vspimport cannot start</source>
        <translation>vspimport kann nicht starten</translation>
    </message>
    <message>
        <source>No pictures can be taken: %1</source>
        <translation>Es können keine Bilder aufgenommen werden: %1</translation>
    </message>
</context>
<context>
    <name>Reason</name>
    <message>
        <source>not a media file, or of a kind that is not known</source>
        <translation>keine Mediendatei oder von unbekannter Art</translation>
    </message>
    <message>
        <source>no disc in it</source>
        <translation>enthält keine Disc</translation>
    </message>
    <message>
        <source>no video or audio in it</source>
        <translation>enthält weder Video noch Audio</translation>
    </message>
    <message>
        <source>it is damaged or not complete</source>
        <translation>beschädigt oder unvollständig</translation>
    </message>
    <message>
        <source>it is cut off</source>
        <translation>abgeschnitten</translation>
    </message>
    <message>
        <source>it is cut off: its index is missing</source>
        <translation>abgeschnitten: der Index fehlt</translation>
    </message>
    <message>
        <source>protected against copying</source>
        <translation>kopiergeschützt</translation>
    </message>
    <message>
        <source>it took too long</source>
        <translation>das Lesen dauerte zu lange</translation>
    </message>
    <message>
        <source>its decoder crashed, or needed too much memory</source>
        <translation>der Decoder ist abgestürzt oder brauchte zu viel Speicher</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>the disk cannot read it</source>
        <translation>der Datenträger kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>neither a file nor a folder</source>
        <translation>weder eine Datei noch ein Ordner</translation>
    </message>
    <message>
        <source>it is not there any more</source>
        <translation>nicht mehr vorhanden</translation>
    </message>
    <message>
        <source>no permission to read it</source>
        <translation>keine Leseberechtigung</translation>
    </message>
    <message>
        <source>the engine cannot be started</source>
        <translation>die Engine kann nicht gestartet werden</translation>
    </message>
    <message>
        <source>it cannot be opened or read</source>
        <translation>kann nicht geöffnet oder gelesen werden</translation>
    </message>
    <message>
        <source>not among the formats to import</source>
        <translation>gehört nicht zu den Formaten, die importiert werden</translation>
    </message>
    <message>
        <source>among the forbidden formats</source>
        <translation>gehört zu den gesperrten Formaten</translation>
    </message>
    <message>
        <source>cannot be opened or read</source>
        <translation>kann nicht geöffnet oder gelesen werden</translation>
    </message>
    <message>
        <source>no such file or folder</source>
        <translation>keine solche Datei und kein solcher Ordner</translation>
    </message>
    <message>
        <source>the name is no valid text</source>
        <translation>der Name ist kein gültiger Text</translation>
    </message>
    <message>
        <source>the folder cannot be read</source>
        <translation>der Ordner kann nicht gelesen werden</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Drop films, folders and discs here to see what is in them.</source>
        <translation>Ziehen Sie Filme, Ordner und Discs hierher, um zu sehen, was darin steckt.</translation>
    </message>
</context>
<context>
    <name>WindowActions</name>
    <message>
        <source>&amp;Open Files…</source>
        <translation>Da&amp;teien öffnen…</translation>
    </message>
    <message>
        <source>Imports media files and disc images</source>
        <translation>Importiert Mediendateien und Disc-Abbilder</translation>
    </message>
    <message>
        <source>Imports all that lies below a folder</source>
        <translation>Importiert alles, was in einem Ordner und seinen Unterordnern liegt</translation>
    </message>
    <message>
        <source>Imports a DVD or Blu-ray disc, in a drive or in a folder</source>
        <translation>Importiert eine DVD oder Blu-ray-Disc aus einem Laufwerk oder einem Ordner</translation>
    </message>
    <message>
        <source>Open &amp;List…</source>
        <translation>&amp;Liste öffnen…</translation>
    </message>
    <message>
        <source>Imports what a list has been saved of</source>
        <translation>Importiert, was in einer gespeicherten Liste steht</translation>
    </message>
    <message>
        <source>&amp;Save List…</source>
        <translation>Liste &amp;speichern…</translation>
    </message>
    <message>
        <source>Saves which items there are</source>
        <translation>Speichert, welche Einträge vorhanden sind</translation>
    </message>
    <message>
        <source>&amp;JSON…</source>
        <translation>&amp;JSON…</translation>
    </message>
    <message>
        <source>All facts, for programs</source>
        <translation>Alle Angaben, für Programme</translation>
    </message>
    <message>
        <source>&amp;CSV…</source>
        <translation>&amp;CSV…</translation>
    </message>
    <message>
        <source>A line an item, for spreadsheets</source>
        <translation>Eine Zeile je Eintrag, für Tabellenkalkulationen</translation>
    </message>
    <message>
        <source>&amp;Page…</source>
        <translation>&amp;Seite…</translation>
    </message>
    <message>
        <source>A page with all pictures, for browsers</source>
        <translation>Eine Seite mit allen Bildern, für Browser</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Closes the window</source>
        <translation>Schließt das Fenster</translation>
    </message>
    <message>
        <source>Ctrl+Shift+O</source>
        <translation>Ctrl+Shift+O</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>Ctrl+L</source>
        <translation>Ctrl+L</translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation>Ctrl+E</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Imports the files that were copied</source>
        <translation>Importiert die kopierten Dateien</translation>
    </message>
    <message>
        <source>&amp;Copy Path</source>
        <translation>&amp;Pfad kopieren</translation>
    </message>
    <message>
        <source>Copies where the selected items lie</source>
        <translation>Kopiert die Pfade der ausgewählten Einträge</translation>
    </message>
    <message>
        <source>Copy as &amp;JSON</source>
        <translation>Als &amp;JSON kopieren</translation>
    </message>
    <message>
        <source>Copies all facts of the selected items</source>
        <translation>Kopiert alle Angaben zu den ausgewählten Einträgen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Selects all that is shown</source>
        <translation>Wählt alles aus, was angezeigt wird</translation>
    </message>
    <message>
        <source>&amp;Remove from List</source>
        <translation>Aus der &amp;Liste entfernen</translation>
    </message>
    <message>
        <source>Removes no file, only the items here</source>
        <translation>Löscht keine Datei, entfernt nur die Einträge hier</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>Shows only items with certain words</source>
        <translation>Zeigt nur Einträge mit bestimmten Wörtern</translation>
    </message>
    <message>
        <source>Ctrl+Shift+C</source>
        <translation>Ctrl+Shift+C</translation>
    </message>
    <message>
        <source>&amp;Pictures</source>
        <translation>&amp;Bilder</translation>
    </message>
    <message>
        <source>Shows the items as pictures</source>
        <translation>Zeigt die Einträge als Bilder</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tabelle</translation>
    </message>
    <message>
        <source>Shows the items with their facts, and what is in discs</source>
        <translation>Zeigt die Einträge mit ihren Angaben und den Inhalt von Discs</translation>
    </message>
    <message>
        <source>&amp;Details</source>
        <translation>&amp;Details</translation>
    </message>
    <message>
        <source>Shows what is known of the selected item</source>
        <translation>Zeigt, was über den ausgewählten Eintrag bekannt ist</translation>
    </message>
    <message>
        <source>Ctrl+1</source>
        <translation>Ctrl+1</translation>
    </message>
    <message>
        <source>Ctrl+2</source>
        <translation>Ctrl+2</translation>
    </message>
    <message>
        <source>F9</source>
        <translation>F9</translation>
    </message>
    <message>
        <source>&amp;Descending</source>
        <translation>&amp;Absteigend</translation>
    </message>
    <message>
        <source>The greatest first</source>
        <translation>Das Größte zuerst</translation>
    </message>
    <message>
        <source>&amp;Open with Player</source>
        <translation>&amp;Mit Player öffnen</translation>
    </message>
    <message>
        <source>Opens the selected items with the desktop&apos;s player</source>
        <translation>Öffnet die ausgewählten Einträge mit dem Player des Desktops</translation>
    </message>
    <message>
        <source>Show in &amp;Folder</source>
        <translation>Im &amp;Ordner anzeigen</translation>
    </message>
    <message>
        <source>Shows the selected items in the file manager</source>
        <translation>Zeigt die ausgewählten Einträge in der Dateiverwaltung</translation>
    </message>
    <message>
        <source>&amp;Stop Import</source>
        <translation>I&amp;mport anhalten</translation>
    </message>
    <message>
        <source>Ends the import; what has been found stays</source>
        <translation>Beendet den Import; was gefunden wurde, bleibt erhalten</translation>
    </message>
    <message>
        <source>&amp;About vspimport</source>
        <translation>&amp;Über vspimport</translation>
    </message>
    <message>
        <source>Versions and licence</source>
        <translation>Versionen und Lizenz</translation>
    </message>
    <message>
        <source>Ctrl+Return</source>
        <translation>Ctrl+Return</translation>
    </message>
    <message>
        <source>Ctrl+Shift+Return</source>
        <translation>Ctrl+Shift+Return</translation>
    </message>
    <message>
        <source>Ctrl+.</source>
        <translation>Ctrl+.</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Exportieren</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Sort by</source>
        <translation>&amp;Sortieren nach</translation>
    </message>
    <message>
        <source>&amp;Item</source>
        <translation>&amp;Eintrag</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach o&amp;ben verschieben</translation>
    </message>
    <message>
        <source>Moves the selected items up in the own order</source>
        <translation>Verschiebt die ausgewählten Einträge in der eigenen Reihenfolge nach oben</translation>
    </message>
    <message>
        <source>Move Do&amp;wn</source>
        <translation>Nach &amp;unten verschieben</translation>
    </message>
    <message>
        <source>Moves the selected items down in the own order</source>
        <translation>Verschiebt die ausgewählten Einträge in der eigenen Reihenfolge nach unten</translation>
    </message>
    <message>
        <source>Alt+Up</source>
        <translation>Alt+Up</translation>
    </message>
    <message>
        <source>Alt+Down</source>
        <translation>Alt+Down</translation>
    </message>
    <message>
        <source>&amp;Own Order</source>
        <translation>&amp;Eigene Reihenfolge</translation>
    </message>
    <message>
        <source>Open Fol&amp;der…</source>
        <translation>&amp;Ordner öffnen…</translation>
    </message>
    <message>
        <source>Open D&amp;isc…</source>
        <translation>D&amp;isc öffnen…</translation>
    </message>
</context>
</TS>
