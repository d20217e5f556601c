<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>Plotter</name>
    <message>
        <source>Plot</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Show a line between recorded dots</source>
        <translation>Eine Linie zwischen den aufgenommenen Punkten zeigen</translation>
    </message>
    <message>
        <source>Show width as height</source>
        <translation>Breite wie Höhe zeigen</translation>
    </message>
    <message>
        <source>Show all data</source>
        <translation>Alle Daten zeigen</translation>
    </message>
    <message>
        <source>Enable recording</source>
        <translation>Aufnahme einschalten</translation>
    </message>
</context>
<context>
    <name>XYPlotter</name>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source> Device Y</source>
        <translation> Gerät Y</translation>
    </message>
    <message>
        <source> Device X</source>
        <translation> Gerät X</translation>
    </message>
    <message>
        <source>Screenshot</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Clear buffer</source>
        <translation>Puffer leeren</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Aufzeichnen</translation>
    </message>
    <message>
        <source>
Set checked for signed interpretation
</source>
        <translation>
Ankreuzen, um die Bits mit Vorzeichen zu lesen
</translation>
    </message>
    <message>
        <source>Axis parameter (Motor %1)</source>
        <translation>Achsparameter (Motor %1)</translation>
    </message>
    <message>
        <source>Bank 2</source>
        <translation>Bank 2</translation>
    </message>
    <message>
        <source>User variables (Bank 2)</source>
        <translation>Benutzervariablen (Bank 2)</translation>
    </message>
    <message>
        <source>Axis 0</source>
        <translation>Achse 0</translation>
    </message>
    <message>
        <source>Digital input (Motor 0)</source>
        <translation>Digitaler Eingang (Motor 0)</translation>
    </message>
    <message>
        <source>Axis 2</source>
        <translation>Achse 2</translation>
    </message>
    <message>
        <source>Digital output (Motor 2)</source>
        <translation>Digitaler Ausgang (Motor 2)</translation>
    </message>
    <message>
        <source>Axis 1</source>
        <translation>Achse 1</translation>
    </message>
    <message>
        <source>Analog input (Motor 1)</source>
        <translation>Analoger Eingang (Motor 1)</translation>
    </message>
    <message>
        <source>Cmd</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Offset</source>
        <translation>Offset</translation>
    </message>
    <message>
        <source>Mapped bits</source>
        <translation>Bits</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>
Register </source>
        <translation>
Register </translation>
    </message>
    <message>
        <source>Curve %1</source>
        <translation>Kurve %1</translation>
    </message>
    <message>
        <source>Sampling rate</source>
        <translation>Abtastrate</translation>
    </message>
    <message>
        <source>Trail of the selected curve</source>
        <translation>Spur der gewählten Kurve</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>csv (*.csv)</source>
        <translation>CSV-Dateien (*.csv)</translation>
    </message>
    <message>
        <source>Intervall %1 ms</source>
        <translation>Intervall %1 ms</translation>
    </message>
    <message>
        <source>no sample</source>
        <translation>keine Abtastung</translation>
    </message>
    <message>
        <source>%1 of curve %2</source>
        <translation>%1 von Kurve %2</translation>
    </message>
    <message>
        <source>Module for %1</source>
        <translation>Modul für %1</translation>
    </message>
    <message>
        <source>Motor for %1</source>
        <translation>Motor für %1</translation>
    </message>
    <message>
        <source>Value for %1</source>
        <translation>Wert für %1</translation>
    </message>
</context>
</TS>
