<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>BasicTools</name>
    <message>
        <source>There is no window to take a picture of.</source>
        <translation>Es gibt kein Fenster, von dem sich ein Bild machen ließe.</translation>
    </message>
    <message>
        <source>The window is too small for a picture.</source>
        <translation>Das Fenster ist zu klein für ein Bild.</translation>
    </message>
    <message>
        <source>The picture folder %1 cannot be made.</source>
        <translation>Der Bilderordner %1 lässt sich nicht anlegen.</translation>
    </message>
    <message>
        <source>The picture %1 cannot be written: %2.</source>
        <translation>Das Bild %1 lässt sich nicht schreiben: %2.</translation>
    </message>
</context>
<context>
    <name>ExportCSV</name>
    <message>
        <source>Export table</source>
        <translation>Tabelle exportieren</translation>
    </message>
    <message>
        <source>Outcome of the last copy or save</source>
        <translation>Ergebnis des letzten Kopierens oder Speicherns</translation>
    </message>
    <message>
        <source>There is nothing to copy.</source>
        <translation>Es gibt nichts zu kopieren.</translation>
    </message>
    <message>
        <source>Copied the whole table.</source>
        <translation>Die ganze Tabelle wurde kopiert.</translation>
    </message>
    <message>
        <source>Copied the selected cells.</source>
        <translation>Die ausgewählten Zellen wurden kopiert.</translation>
    </message>
    <message>
        <source>Save table</source>
        <translation>Tabelle speichern</translation>
    </message>
    <message>
        <source>Delimited text (*.csv);;All files (*)</source>
        <translation>Text mit Trennzeichen (*.csv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>The table is empty.</source>
        <translation>Die Tabelle ist leer.</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gespeichert als %1</translation>
    </message>
    <message>
        <source>Not saved.</source>
        <translation>Nicht gespeichert.</translation>
    </message>
    <message>
        <source>The table was not saved as %1.</source>
        <translation>Die Tabelle wurde nicht als %1 gespeichert.</translation>
    </message>
    <message>
        <source>Table to export</source>
        <translation>Zu exportierende Tabelle</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Trennzeichen</translation>
    </message>
    <message>
        <source>Semicolon</source>
        <translation>Semikolon</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>Decimal mark</source>
        <translation>Dezimalzeichen</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>S&amp;eparator:</source>
        <translation>&amp;Trennzeichen:</translation>
    </message>
    <message>
        <source>&amp;Decimal mark:</source>
        <translation>&amp;Dezimalzeichen:</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copies the selected cells, or the whole table when none is selected</source>
        <translation>Kopiert die ausgewählten Zellen, oder die ganze Tabelle, wenn keine ausgewählt ist</translation>
    </message>
    <message>
        <source>&amp;Save...</source>
        <translation>&amp;Speichern ...</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>Sch&amp;ließen</translation>
    </message>
</context>
<context>
    <name>ReplaceableFile</name>
    <message>
        <source>There is a folder of that name.</source>
        <translation>Einen Ordner dieses Namens gibt es schon.</translation>
    </message>
    <message>
        <source>It is no ordinary file but a device, a pipe or a socket.</source>
        <translation>Es ist keine gewöhnliche Datei, sondern ein Gerät, eine Pipe oder ein Socket.</translation>
    </message>
</context>
</TS>
