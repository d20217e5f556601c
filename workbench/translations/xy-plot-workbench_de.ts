<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>AnswerWatch</name>
    <message>
        <source>Slow: %1 answers/s</source>
        <translation>Langsam: %1 Antworten/s</translation>
    </message>
    <message>
        <source>since %1 the values of %2 are old ones</source>
        <translation>seit %1 sind die Werte von %2 alt</translation>
    </message>
    <message>
        <source>Not answering since %1: its values are old ones</source>
        <translation>Antwortet nicht seit %1: Seine Werte sind alt</translation>
    </message>
</context>
<context>
    <name>AppearanceMenu</name>
    <message>
        <source>&amp;Palette</source>
        <translation>&amp;Farben</translation>
    </message>
    <message>
        <source>Choose the colours of the windows</source>
        <translation>Die Farben der Fenster wählen</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>&amp;System</translation>
    </message>
    <message>
        <source>Style and colours of the desktop</source>
        <translation>Stil und Farben der Arbeitsumgebung</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>Dark on light</source>
        <translation>Dunkel auf Hell</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dunkel</translation>
    </message>
    <message>
        <source>Light on dark</source>
        <translation>Hell auf Dunkel</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>Choose the language of the program from the next start on</source>
        <translation>Die Sprache des Programms ab dem nächsten Start wählen</translation>
    </message>
    <message>
        <source>The language changes at the next start.</source>
        <translation>Die Sprache ändert sich beim nächsten Start.</translation>
    </message>
    <message>
        <source>As the &amp;System</source>
        <translation>Wie das &amp;System</translation>
    </message>
    <message>
        <source>The system&apos;s language, from the next start on</source>
        <translation>Die Sprache des Systems, ab dem nächsten Start</translation>
    </message>
    <message>
        <source>%1, from the next start on</source>
        <translation>%1, ab dem nächsten Start</translation>
    </message>
</context>
<context>
    <name>ChoiceReader</name>
    <message>
        <source>curve %1, %2: its page shows the module &quot;%3&quot;, but all curves share one module per side, which is &quot;%4&quot;</source>
        <translation>Kurve %1, %2: Ihre Seite zeigt das Modul „%3“, aber alle Kurven teilen sich je Seite ein Modul, und das ist „%4“</translation>
    </message>
</context>
<context>
    <name>ConnectionSettings</name>
    <message>
        <source>The host is missing.</source>
        <translation>Der Rechnername fehlt.</translation>
    </message>
    <message>
        <source>The port has to be 1 to 65535.</source>
        <translation>Der Port muss 1 bis 65535 sein.</translation>
    </message>
    <message>
        <source>The unit has to be 0 to %1, or %2.</source>
        <translation>Die Einheit muss 0 bis %1 oder %2 sein.</translation>
    </message>
    <message>
        <source>The serial port is missing.</source>
        <translation>Die serielle Schnittstelle fehlt.</translation>
    </message>
    <message>
        <source>%1 baud is none of the usual rates.</source>
        <translation>%1 Baud ist keine der üblichen Raten.</translation>
    </message>
    <message>
        <source>There are 1 or 2 stop bits.</source>
        <translation>Es gibt 1 oder 2 Stoppbits.</translation>
    </message>
    <message>
        <source>The unit has to be 1 to %1.</source>
        <translation>Die Einheit muss 1 bis %1 sein.</translation>
    </message>
</context>
<context>
    <name>ConnectionTrouble</name>
    <message>
        <source>Connecting…</source>
        <translation>Verbindung wird aufgebaut …</translation>
    </message>
    <message>
        <source>The name of the host has no address: %1</source>
        <translation>Der Rechnername hat keine Adresse: %1</translation>
    </message>
    <message>
        <source>The host refuses the connection: no server listens at this port.</source>
        <translation>Der Rechner lehnt die Verbindung ab: An diesem Port wartet kein Server.</translation>
    </message>
    <message>
        <source>This computer does not let the connection out: is it a rule of its firewall?</source>
        <translation>Dieser Rechner lässt die Verbindung nicht hinaus: verbietet es eine Regel seiner Firewall?</translation>
    </message>
    <message>
        <source>There is no route to the host.</source>
        <translation>Es gibt keinen Weg zum Rechner.</translation>
    </message>
    <message>
        <source>The host does not react.</source>
        <translation>Der Rechner reagiert nicht.</translation>
    </message>
    <message>
        <source>There is no such serial port. Is it plugged in?</source>
        <translation>Diese serielle Schnittstelle gibt es nicht. Ist sie eingesteckt?</translation>
    </message>
    <message>
        <source>No permission for the serial port.</source>
        <translation>Keine Berechtigung für die serielle Schnittstelle.</translation>
    </message>
    <message>
        <source>No permission for the serial port: members of the group &quot;%1&quot; have it.</source>
        <translation>Keine Berechtigung für die serielle Schnittstelle: Mitglieder der Gruppe „%1“ haben sie.</translation>
    </message>
    <message>
        <source>The serial port is in use, by another program or with other settings.</source>
        <translation>Die serielle Schnittstelle ist belegt, von einem anderen Programm oder mit anderen Einstellungen.</translation>
    </message>
    <message>
        <source>This file is no serial port.</source>
        <translation>Diese Datei ist keine serielle Schnittstelle.</translation>
    </message>
    <message>
        <source>The connection failed: %1</source>
        <translation>Die Verbindung ist gescheitert: %1</translation>
    </message>
    <message>
        <source>The connection was closed.</source>
        <translation>Die Verbindung wurde geschlossen.</translation>
    </message>
    <message>
        <source>No answer. Are unit, cable and rate right?</source>
        <translation>Keine Antwort. Stimmen Einheit, Kabel und Rate?</translation>
    </message>
    <message>
        <source>Another unit answered instead.</source>
        <translation>Stattdessen hat eine andere Einheit geantwortet.</translation>
    </message>
    <message>
        <source>Unit %1 answered instead.</source>
        <translation>Stattdessen hat Einheit %1 geantwortet.</translation>
    </message>
    <message>
        <source>The answers belong to other requests.</source>
        <translation>Die Antworten gehören zu anderen Anfragen.</translation>
    </message>
    <message>
        <source>The answers do not have the length that was asked for.</source>
        <translation>Die Antworten haben nicht die verlangte Länge.</translation>
    </message>
    <message>
        <source>Garbage on the line. Do rate, parity and stop bits match?</source>
        <translation>Unlesbares auf der Leitung. Stimmen Rate, Parität und Stoppbits überein?</translation>
    </message>
    <message>
        <source>The device answers with exception %1: %2.</source>
        <translation>Das Gerät antwortet mit Ausnahme %1: %2.</translation>
    </message>
    <message>
        <source>illegal function</source>
        <translation>unzulässige Funktion</translation>
    </message>
    <message>
        <source>illegal data address</source>
        <translation>unzulässige Datenadresse</translation>
    </message>
    <message>
        <source>illegal data value</source>
        <translation>unzulässiger Datenwert</translation>
    </message>
    <message>
        <source>device failure</source>
        <translation>Gerätefehler</translation>
    </message>
    <message>
        <source>acknowledge, it takes longer</source>
        <translation>angenommen, es dauert länger</translation>
    </message>
    <message>
        <source>device busy</source>
        <translation>Gerät beschäftigt</translation>
    </message>
    <message>
        <source>negative acknowledge</source>
        <translation>abgelehnt</translation>
    </message>
    <message>
        <source>memory parity error</source>
        <translation>Paritätsfehler im Speicher</translation>
    </message>
    <message>
        <source>gateway path unavailable</source>
        <translation>Weg über das Gateway nicht verfügbar</translation>
    </message>
    <message>
        <source>the gateway&apos;s target does not answer</source>
        <translation>das Ziel hinter dem Gateway antwortet nicht</translation>
    </message>
    <message>
        <source>What the host sends is no Modbus.</source>
        <translation>Was der Rechner sendet, ist kein Modbus.</translation>
    </message>
    <message>
        <source>No answer. Is the unit right?</source>
        <translation>Keine Antwort. Stimmt die Einheit?</translation>
    </message>
</context>
<context>
    <name>ContainerFields</name>
    <message>
        <source>the key of one of the set-up&apos;s modules: %1</source>
        <translation>der Schlüssel eines Moduls des Aufbaus: %1</translation>
    </message>
    <message>
        <source>a module that is plugged in</source>
        <translation>ein Modul, das eingesteckt ist</translation>
    </message>
    <message>
        <source>&quot;%1&quot; as for the first curve, because all curves share one module per side</source>
        <translation>„%1“ wie bei der ersten Kurve, denn alle Kurven teilen sich je Seite ein Modul</translation>
    </message>
    <message>
        <source>at most %1 curves</source>
        <translation>höchstens %1 Kurven</translation>
    </message>
    <message>
        <source>a whole number, because position and size belong together</source>
        <translation>eine ganze Zahl, denn Ort und Größe gehören zusammen</translation>
    </message>
    <message>
        <source>&quot;normal&quot;, because the window has position and size</source>
        <translation>„normal“, denn das Fenster hat Ort und Größe</translation>
    </message>
</context>
<context>
    <name>DeviceDialog</name>
    <message>
        <source>Add Modbus TCP Device</source>
        <translation>Modbus-TCP-Gerät hinzufügen</translation>
    </message>
    <message>
        <source>Add Modbus RTU Device</source>
        <translation>Modbus-RTU-Gerät hinzufügen</translation>
    </message>
    <message>
        <source>Edit %1</source>
        <translation>%1 bearbeiten</translation>
    </message>
    <message>
        <source>The number of the device, also called slave address. Devices with a network port of their own mostly take 1 or 255.</source>
        <translation>Die Nummer des Geräts, auch Slave-Adresse genannt. Geräte mit eigenem Netzwerkanschluss nehmen meist 1 oder 255.</translation>
    </message>
    <message>
        <source>&amp;Unit:</source>
        <translation>&amp;Einheit:</translation>
    </message>
    <message>
        <source>Register &amp;map:</source>
        <translation>&amp;Registerbelegung:</translation>
    </message>
    <message>
        <source>What the device is called in lists; without a name it is called after its register map</source>
        <translation>Wie das Gerät in Listen heißt; ohne Namen heißt es nach seiner Registerbelegung</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>&amp;Test</source>
        <translation>&amp;Testen</translation>
    </message>
    <message>
        <source>Try to read the first value of the register map; nothing is written to the device</source>
        <translation>Versuchen, den ersten Wert der Registerbelegung zu lesen; in das Gerät wird nichts geschrieben</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Change</source>
        <translation>Än&amp;dern</translation>
    </message>
    <message>
        <source>Name or address of the device, such as 192.168.0.10</source>
        <translation>Name oder Adresse des Geräts, zum Beispiel 192.168.0.10</translation>
    </message>
    <message>
        <source>&amp;Host:</source>
        <translation>H&amp;ost:</translation>
    </message>
    <message>
        <source>The TCP port of the device; 502 is the usual one</source>
        <translation>Der TCP-Port des Geräts; üblich ist 502</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>&amp;Port:</translation>
    </message>
    <message>
        <source>The serial port that the device is connected to. A name below /dev/serial/by-id stays with its adapter, wherever that is plugged in.</source>
        <translation>Die serielle Schnittstelle, an der das Gerät hängt. Ein Name unter /dev/serial/by-id bleibt bei seinem Adapter, wo immer er eingesteckt wird.</translation>
    </message>
    <message>
        <source>Serial &amp;port:</source>
        <translation>&amp;Schnittstelle:</translation>
    </message>
    <message>
        <source>Bits per second, as set in the device</source>
        <translation>Bits pro Sekunde, wie im Gerät eingestellt</translation>
    </message>
    <message>
        <source>&amp;Baud:</source>
        <translation>&amp;Baud:</translation>
    </message>
    <message>
        <source>As set in the device; Modbus has even parity unless a device says otherwise</source>
        <translation>Wie im Gerät eingestellt; Modbus hat gerade Parität, wenn das Gerät nichts anderes sagt</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Even</source>
        <translation>Gerade</translation>
    </message>
    <message>
        <source>Odd</source>
        <translation>Ungerade</translation>
    </message>
    <message>
        <source>P&amp;arity:</source>
        <translation>P&amp;arität:</translation>
    </message>
    <message>
        <source>As set in the device; mostly 1, and 2 without parity</source>
        <translation>Wie im Gerät eingestellt; meist 1, ohne Parität 2</translation>
    </message>
    <message>
        <source>&amp;Stop bits:</source>
        <translation>Sto&amp;ppbits:</translation>
    </message>
    <message>
        <source>The JSON file that describes the values of the device</source>
        <translation>Die JSON-Datei, die die Werte des Geräts beschreibt</translation>
    </message>
    <message>
        <source>B&amp;rowse…</source>
        <translation>Aus&amp;wählen…</translation>
    </message>
    <message>
        <source>Choose the register map from a list</source>
        <translation>Die Registerbelegung in einer Liste auswählen</translation>
    </message>
    <message>
        <source>Register Map</source>
        <translation>Registerbelegung</translation>
    </message>
    <message>
        <source>Register maps (*.json);;All files (*)</source>
        <translation>Registerbelegungen (*.json);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Trying…</source>
        <translation>Versuch läuft…</translation>
    </message>
</context>
<context>
    <name>DeviceFields</name>
    <message>
        <source>one of %1</source>
        <translation>eines von %1</translation>
    </message>
    <message>
        <source>0 to %1, or %2</source>
        <translation>0 bis %1, oder %2</translation>
    </message>
</context>
<context>
    <name>DeviceRow</name>
    <message>
        <source>%1, unit %2
%3</source>
        <translation>%1, Einheit %2
%3</translation>
    </message>
    <message>
        <source>Whether the device is connected, how often a second it really answers, and how old its newest values are</source>
        <translation>Ob das Gerät verbunden ist, wie oft in der Sekunde es wirklich antwortet und wie alt seine neuesten Werte sind</translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten…</translation>
    </message>
    <message>
        <source>Change where the device is and how it is read; its values have to be chosen again then</source>
        <translation>Ändern, wo das Gerät ist und wie es gelesen wird; seine Werte müssen dann neu gewählt werden</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove the device from the workbench</source>
        <translation>Das Gerät aus der Werkbank entfernen</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Taken out</source>
        <translation>Herausgenommen</translation>
    </message>
    <message>
        <source>Not connected, trying again</source>
        <translation>Nicht verbunden, wird wieder versucht</translation>
    </message>
    <message>
        <source>Connected, without values</source>
        <translation>Verbunden, ohne Werte</translation>
    </message>
    <message>
        <source>Connected, not asked</source>
        <translation>Verbunden, nicht abgefragt</translation>
    </message>
    <message>
        <source>Connected and answering, not plotted</source>
        <translation>Verbunden, antwortet, nicht dargestellt</translation>
    </message>
    <message>
        <source>Connected, %1 answers/s, values %2 ms old</source>
        <translation>Verbunden, %1 Antworten/s, Werte %2 ms alt</translation>
    </message>
</context>
<context>
    <name>DeviceTest</name>
    <message>
        <source>Nothing came within %1 s.</source>
        <translation>Innerhalb von %1 s kam nichts.</translation>
    </message>
    <message>
        <source>exception %1: %2</source>
        <translation>Ausnahme %1: %2</translation>
    </message>
    <message>
        <source>The register map cannot be used: %1</source>
        <translation>Die Registerbelegung ist nicht brauchbar: %1</translation>
    </message>
    <message>
        <source>Unit %1 answers.</source>
        <translation>Einheit %1 antwortet.</translation>
    </message>
    <message>
        <source>Unit %1 answers, with %2.</source>
        <translation>Einheit %1 antwortet, mit %2.</translation>
    </message>
    <message>
        <source>Unit %1 answers, but not for &quot;%2&quot;: %3. Is it the right register map?</source>
        <translation>Einheit %1 antwortet, aber nicht für „%2“: %3. Ist es die richtige Registerbelegung?</translation>
    </message>
    <message>
        <source>Unit %1 answers: &quot;%2&quot; is %3.</source>
        <translation>Einheit %1 antwortet: „%2“ ist %3.</translation>
    </message>
</context>
<context>
    <name>DeviceText</name>
    <message>
        <source>expected modbus-tcp:HOST:PORT/UNIT,MAP or modbus-rtu:PORT:BAUD[:none|even|odd[:STOPBITS]]/UNIT,MAP, found &quot;%1&quot;</source>
        <translation>erwartet wird modbus-tcp:HOST:PORT/UNIT,MAP oder modbus-rtu:PORT:BAUD[:none|even|odd[:STOPBITS]]/UNIT,MAP, nicht „%1“</translation>
    </message>
</context>
<context>
    <name>ExchangePanel</name>
    <message>
        <source>Exchanges with the modules</source>
        <translation>Abfragen der Module</translation>
    </message>
    <message>
        <source>Module</source>
        <translation>Modul</translation>
    </message>
    <message>
        <source>Last [µs]</source>
        <translation>Letzte [µs]</translation>
    </message>
    <message>
        <source>Mean [µs]</source>
        <translation>Mittel [µs]</translation>
    </message>
    <message>
        <source>Longest [µs]</source>
        <translation>Längste [µs]</translation>
    </message>
    <message>
        <source>Unanswered</source>
        <translation>Unbeantwortet</translation>
    </message>
    <message>
        <source>Requests that got no answer in time</source>
        <translation>Anfragen, die nicht rechtzeitig beantwortet wurden</translation>
    </message>
    <message>
        <source>Answers/s</source>
        <translation>Antworten/s</translation>
    </message>
    <message>
        <source>How often and how fast each module answers, and how many requests it left unanswered.</source>
        <translation>Wie oft und wie schnell jedes Modul antwortet, und wie viele Anfragen es unbeantwortet ließ.</translation>
    </message>
</context>
<context>
    <name>FieldReader</name>
    <message>
        <source>%1: field &quot;%2&quot;: expected %3</source>
        <translation>%1: Feld „%2“: erwartet wird %3</translation>
    </message>
    <message>
        <source>no such field, only: %1</source>
        <translation>keines dieses Namens, nur: %1</translation>
    </message>
    <message>
        <source>a text that is not empty</source>
        <translation>ein Text, der nicht leer ist</translation>
    </message>
    <message>
        <source>a text</source>
        <translation>ein Text</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>a whole number from %1 to %2</source>
        <translation>eine ganze Zahl von %1 bis %2</translation>
    </message>
    <message>
        <source>an object in braces</source>
        <translation>ein Objekt in geschweiften Klammern</translation>
    </message>
    <message>
        <source>a list of objects in brackets</source>
        <translation>eine Liste von Objekten in eckigen Klammern</translation>
    </message>
    <message>
        <source>one of %1</source>
        <translation>eines von %1</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New Set-Up</source>
        <translation>&amp;Neuer Aufbau</translation>
    </message>
    <message>
        <source>Begin again with one module of each kind and an empty container</source>
        <translation>Neu beginnen mit einem Modul jeder Art und einem leeren Container</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Open a set-up: modules, containers and what they show</source>
        <translation>Einen Aufbau öffnen: Module, Container und was sie zeigen</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt verwendet</translation>
    </message>
    <message>
        <source>Open a set-up that was opened or saved before</source>
        <translation>Einen Aufbau öffnen, der schon einmal geöffnet oder gespeichert wurde</translation>
    </message>
    <message>
        <source>&amp;Examples</source>
        <translation>B&amp;eispiele</translation>
    </message>
    <message>
        <source>Open one of the set-ups that came with the program</source>
        <translation>Einen der mitgelieferten Aufbauten öffnen</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save the set-up to its file</source>
        <translation>Den Aufbau in seine Datei speichern</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter …</translation>
    </message>
    <message>
        <source>Save the set-up to another file</source>
        <translation>Den Aufbau in eine andere Datei speichern</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Close all windows and end the program</source>
        <translation>Alle Fenster schließen und das Programm beenden</translation>
    </message>
    <message>
        <source>New set-up</source>
        <translation>Neuer Aufbau</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>There is no file &quot;%1&quot;.</source>
        <translation>Es gibt keine Datei „%1“.</translation>
    </message>
    <message>
        <source>It was taken from the list of recent files.</source>
        <translation>Sie wurde aus der Liste der zuletzt verwendeten Dateien genommen.</translation>
    </message>
    <message>
        <source>New &amp;Container</source>
        <translation>Neuer &amp;Container</translation>
    </message>
    <message>
        <source>New %1</source>
        <translation>Neu: %1</translation>
    </message>
    <message>
        <source>Make one more container and open it</source>
        <translation>Einen weiteren Container anlegen und öffnen</translation>
    </message>
    <message>
        <source>No set-up was opened or saved yet</source>
        <translation>Noch wurde kein Aufbau geöffnet oder gespeichert</translation>
    </message>
    <message>
        <source>&amp;Clear List</source>
        <translation>&amp;Liste leeren</translation>
    </message>
    <message>
        <source>Forget the recent files; the files stay</source>
        <translation>Die zuletzt verwendeten Dateien vergessen; die Dateien bleiben</translation>
    </message>
    <message>
        <source>Set up &quot;%1&quot; in place of what is there</source>
        <translation>„%1“ anstelle dessen aufbauen, was da ist</translation>
    </message>
    <message>
        <source>Begin Again</source>
        <translation>Neu beginnen</translation>
    </message>
    <message>
        <source>Open Set-Up</source>
        <translation>Aufbau öffnen</translation>
    </message>
    <message>
        <source>Set-ups (*.%1 *.json)</source>
        <translation>Aufbauten (*.%1 *.json)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save Set-Up</source>
        <translation>Aufbau speichern</translation>
    </message>
    <message>
        <source>The set-up was not saved.</source>
        <translation>Der Aufbau wurde nicht gespeichert.</translation>
    </message>
    <message>
        <source>The set-up was saved, but not all of it can be kept:</source>
        <translation>Der Aufbau wurde gespeichert, aber nicht alles lässt sich aufbewahren:</translation>
    </message>
    <message>
        <source>Save the changes to &quot;%1&quot;?</source>
        <translation>Änderungen an „%1“ speichern?</translation>
    </message>
    <message>
        <source>A recording is running, and would end.</source>
        <translation>Eine Aufzeichnung läuft und würde enden.</translation>
    </message>
    <message>
        <source>A recording is running, and will end. Its lines are in the file.</source>
        <translation>Eine Aufzeichnung läuft und wird enden. Ihre Zeilen stehen in der Datei.</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>%1 in %2</source>
        <translation>%1 in %2</translation>
    </message>
    <message>
        <source>A new set-up cannot be made; what was there stays.</source>
        <translation>Ein neuer Aufbau lässt sich nicht anlegen; was da war, bleibt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be set up; what was there stays.</source>
        <translation>„%1“ lässt sich nicht aufbauen; was da war, bleibt.</translation>
    </message>
    <message>
        <source>Play a CSV file that was logged, and show its curves</source>
        <translation>Eine protokollierte CSV-Datei abspielen und ihre Kurven zeigen</translation>
    </message>
    <message>
        <source>Open Recor&amp;ding...</source>
        <translation>&amp;Aufzeichnung öffnen …</translation>
    </message>
</context>
<context>
    <name>HelpMenu</name>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Guide</source>
        <translation>Hand&amp;buch</translation>
    </message>
    <message>
        <source>Open the guide in the language of the program</source>
        <translation>Das Handbuch in der Sprache des Programms öffnen</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>&amp;Tastenkürzel</translation>
    </message>
    <message>
        <source>List all keys of the workbench</source>
        <translation>Alle Tasten der Werkbank auflisten</translation>
    </message>
    <message>
        <source>Click something to read what it is for</source>
        <translation>Auf etwas klicken, um zu lesen, wozu es da ist</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über</translation>
    </message>
    <message>
        <source>Show version, licences and the version of Qt</source>
        <translation>Version, Lizenzen und die Version von Qt zeigen</translation>
    </message>
    <message>
        <source>en</source>
        <extracomment>The code of the language that this is translated to.</extracomment>
        <translation>de</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>XY Plot Workbench %1</source>
        <translation>XY Plot Workbench %1</translation>
    </message>
    <message>
        <source>A stand-in host for container plugins, with modules that are simulated, real or played back.

Licence: %1
Qt %2 (GNU LGPL 3), built with %3
libmodbus (GNU LGPL 2.1)</source>
        <translation>Ein Ersatz-Host für Container-Plugins, mit Modulen, die simuliert, echt oder abgespielt sind.

Lizenz: %1
Qt %2 (GNU LGPL 3), gebaut mit %3
libmodbus (GNU LGPL 2.1)</translation>
    </message>
</context>
<context>
    <name>HintBar</name>
    <message>
        <source>Choose a module and a motor under &quot;Device X&quot; and under &quot;Device Y&quot;, and click a value in each table: the curve begins at once. The numbered boxes above the plot switch more curves on.</source>
        <translation>Wählen Sie unter „Gerät X“ und unter „Gerät Y“ je ein Modul und einen Motor, und klicken Sie in jeder Tabelle auf einen Wert: Die Kurve beginnt sofort. Die nummerierten Kästchen über dem Diagramm schalten weitere Kurven ein.</translation>
    </message>
    <message>
        <source>&amp;Got it</source>
        <translation>&amp;Verstanden</translation>
    </message>
    <message>
        <source>Close this hint for good</source>
        <translation>Diesen Hinweis dauerhaft schließen</translation>
    </message>
</context>
<context>
    <name>JsonFile</name>
    <message>
        <source>%1:%2: expected JSON: %3</source>
        <translation>%1:%2: JSON erwartet: %3</translation>
    </message>
    <message>
        <source>%1: expected an object in braces</source>
        <translation>%1: ein Objekt in geschweiften Klammern erwartet</translation>
    </message>
    <message>
        <source>%1: expected a file</source>
        <translation>%1: eine Datei erwartet</translation>
    </message>
    <message>
        <source>%1: cannot be read: %2</source>
        <translation>%1: nicht lesbar: %2</translation>
    </message>
    <message>
        <source>%1: expected up to %2 KiB</source>
        <translation>%1: höchstens %2 KiB erwartet</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Panels</source>
        <translation>Bedienfelder</translation>
    </message>
    <message>
        <source>Containers</source>
        <translation>Container</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Containers</source>
        <translation>&amp;Container</translation>
    </message>
    <message>
        <source>&amp;Tile</source>
        <translation>&amp;Nebeneinander</translation>
    </message>
    <message>
        <source>C&amp;ascade</source>
        <translation>&amp;Überlappend</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Close the container&apos;s window; its curves and sources are kept</source>
        <translation>Das Fenster des Containers schließen; seine Kurven und Quellen bleiben erhalten</translation>
    </message>
    <message>
        <source>Open %1, or bring its window to the front</source>
        <translation>%1 öffnen oder das Fenster nach vorn holen</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>No container is open.
The tool bar opens one, and so does Alt+1.</source>
        <translation>Kein Container ist offen.
Die Werkzeugleiste öffnet einen, ebenso Alt+1.</translation>
    </message>
    <message>
        <source>&amp;Tool Bar</source>
        <translation>&amp;Werkzeugleiste</translation>
    </message>
    <message>
        <source>Show or hide the tool bar with the containers</source>
        <translation>Die Werkzeugleiste mit den Containern zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Show all windows beside and below one another</source>
        <translation>Alle Fenster neben- und untereinander zeigen</translation>
    </message>
    <message>
        <source>Show all windows one behind the other</source>
        <translation>Alle Fenster hintereinander zeigen</translation>
    </message>
    <message>
        <source>Ne&amp;xt</source>
        <translation>N&amp;ächstes</translation>
    </message>
    <message>
        <source>Bring the next window to the front</source>
        <translation>Das nächste Fenster nach vorn holen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Close the container&apos;s window for good, with its curves and its place in the tool bar</source>
        <translation>Das Fenster des Containers endgültig schließen, mit seinen Kurven und seinem Platz in der Werkzeugleiste</translation>
    </message>
</context>
<context>
    <name>MessageModel</name>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Info</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Fatal</source>
        <translation>Fatal</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Severity</source>
        <translation>Schwere</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Kategorie</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>%1
(A click opens %2)</source>
        <translation>%1
(Ein Klick öffnet %2)</translation>
    </message>
</context>
<context>
    <name>MessagePanel</name>
    <message>
        <source>Everything</source>
        <translation>Alles</translation>
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
        <source>&amp;Show:</source>
        <translation>An&amp;zeigen:</translation>
    </message>
    <message>
        <source>&amp;Debug lines</source>
        <translation>Deb&amp;ug-Zeilen</translation>
    </message>
    <message>
        <source>Containers write one debug line for each line that they record, and many others</source>
        <translation>Container schreiben zu jeder aufgezeichneten Zeile eine Debug-Zeile und viele weitere</translation>
    </message>
    <message>
        <source>Cop&amp;y</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the selected messages, or all that are shown when none is selected</source>
        <translation>Die ausgewählten Meldungen kopieren; ist keine ausgewählt, alle angezeigten</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>Forget all messages</source>
        <translation>Alle Meldungen verwerfen</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Which messages are shown; debug lines have a box of their own</source>
        <translation>Welche Meldungen gezeigt werden; Debug-Zeilen haben ein eigenes Kästchen</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Öffnen</translation>
    </message>
    <message>
        <source>Open the file or folder that the current message names</source>
        <translation>Die Datei oder den Ordner öffnen, den die aktuelle Meldung nennt</translation>
    </message>
    <message>
        <source>What containers and the workbench report. A click opens the file or folder that an underlined message names.</source>
        <translation>Was Container und die Werkbank melden. Ein Klick öffnet die Datei oder den Ordner, den eine unterstrichene Meldung nennt.</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Open the folder of the file that the current message names</source>
        <translation>Den Ordner der Datei öffnen, die die aktuelle Meldung nennt</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Pfad kopieren</translation>
    </message>
    <message>
        <source>Copy the path that the current message names</source>
        <translation>Den Pfad kopieren, den die aktuelle Meldung nennt</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy the selected messages</source>
        <translation>Die ausgewählten Meldungen kopieren</translation>
    </message>
</context>
<context>
    <name>ModuleFactory</name>
    <message>
        <source>%1: there is no kind of module called &quot;%2&quot;</source>
        <translation>%1: Es gibt keine Art von Modul namens „%2“</translation>
    </message>
</context>
<context>
    <name>ModuleKind</name>
    <message>
        <source>Three stepper axes with registers: axis 0 runs to and fro with play in its gear, axes 1 and 2 draw a circle.</source>
        <translation>Drei Schrittmotorachsen mit Registern: Achse 0 fährt mit Getriebespiel hin und her, die Achsen 1 und 2 zeichnen einen Kreis.</translation>
    </message>
    <message>
        <source>One servo axis without registers: runs to and fro and swings a little when it stops.</source>
        <translation>Eine Servoachse ohne Register: fährt hin und her und schwingt beim Anhalten etwas nach.</translation>
    </message>
    <message>
        <source>Registers only: analog and digital inputs fed by test signals (circle, spiral, noise, counters).</source>
        <translation>Nur Register: analoge und digitale Eingänge, gespeist von Testsignalen (Kreis, Spirale, Rauschen, Zähler).</translation>
    </message>
</context>
<context>
    <name>ModuleMenu</name>
    <message>
        <source>&amp;Modules</source>
        <translation>&amp;Module</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>Add a device that is reached over the network</source>
        <translation>Ein Gerät hinzufügen, das über das Netzwerk erreicht wird</translation>
    </message>
    <message>
        <source>Modbus &amp;TCP…</source>
        <translation>Modbus &amp;TCP…</translation>
    </message>
    <message>
        <source>Modbus &amp;RTU…</source>
        <translation>Modbus &amp;RTU…</translation>
    </message>
    <message>
        <source>Add a device at a serial port</source>
        <translation>Ein Gerät an einer seriellen Schnittstelle hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
</context>
<context>
    <name>ModulePanel</name>
    <message>
        <source>Modules</source>
        <translation>Module</translation>
    </message>
</context>
<context>
    <name>ModuleRack</name>
    <message>
        <source>%1: there is a module of this key already</source>
        <translation>%1: Ein Modul mit diesem Schlüssel gibt es schon</translation>
    </message>
</context>
<context>
    <name>ModuleRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Plugged in</source>
        <translation>Eingesteckt</translation>
    </message>
    <message>
        <source>Whether containers find this module</source>
        <translation>Ob Container dieses Modul finden</translation>
    </message>
</context>
<context>
    <name>NoticeBar</name>
    <message>
        <source>Notices</source>
        <translation>Hinweise</translation>
    </message>
    <message>
        <source>What is wrong with the values of this window right now, or why its recording ended. The same stands in Messages.</source>
        <translation>Was mit den Werten dieses Fensters gerade nicht stimmt, oder warum seine Aufzeichnung endete. Dasselbe steht in den Meldungen.</translation>
    </message>
    <message>
        <source>Close these notices</source>
        <translation>Diese Hinweise schließen</translation>
    </message>
    <message>
        <source>Close these notices until there are others</source>
        <translation>Diese Hinweise schließen, bis es andere gibt</translation>
    </message>
</context>
<context>
    <name>Notices</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 was taken out</source>
        <translation>%1 wurde herausgenommen</translation>
    </message>
    <message>
        <source>%1 was plugged in</source>
        <translation>%1 wurde eingesteckt</translation>
    </message>
    <message>
        <source>%1 does not answer any more: its values are old ones from now on</source>
        <translation>%1 antwortet nicht mehr: Ab jetzt sind seine Werte alt</translation>
    </message>
    <message>
        <source>%1 answers again, after %2 s</source>
        <translation>%1 antwortet wieder, nach %2 s</translation>
    </message>
    <message>
        <source>Lines of the recording with old values: %1</source>
        <translation>Zeilen der Aufzeichnung mit alten Werten: %1</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>
A signal (SIGINT, SIGTERM, SIGHUP) ends a run as closing the window does, with exit code 128 + its number.
A second one ends it at once.
</source>
        <translation>
Ein Signal (SIGINT, SIGTERM, SIGHUP) beendet einen Lauf wie das Schließen des Fensters, mit dem Exit-Code 128 + seiner Nummer.
Ein zweites beendet ihn sofort.
</translation>
    </message>
    <message>
        <source>Run the scene (default: circle) that long, save a picture and end; default 5.</source>
        <translation>Die Szene (Vorgabe: circle) so lange laufen lassen, ein Bild speichern und enden; Vorgabe 5.</translation>
    </message>
    <message>
        <source>Record the run to a CSV file, by the window&apos;s own box and dialog; an existing file is overwritten. A picture is then saved only with --picture.</source>
        <translation>Den Lauf in eine CSV-Datei aufzeichnen, über Kästchen und Dialog des Fensters; eine vorhandene Datei wird überschrieben. Ein Bild wird dann nur mit --picture gespeichert.</translation>
    </message>
    <message>
        <source>Size of the plot window in pixels; pictures have 1000x600 unless this is given.</source>
        <translation>Größe des Plotfensters in Pixeln; ohne diese Angabe haben Bilder 1000x600.</translation>
    </message>
    <message>
        <source>Seed of all simulated noise, in place of the scene&apos;s own.</source>
        <translation>Startwert allen simulierten Rauschens, anstelle dessen der Szene.</translation>
    </message>
    <message>
        <source>The settings file; scenes use one that is thrown away unless this is given.</source>
        <translation>Die Einstellungsdatei; ohne diese Angabe benutzen Szenen eine, die danach verworfen wird.</translation>
    </message>
    <message>
        <source>List the shipped scenes and end.</source>
        <translation>Die mitgelieferten Szenen auflisten und enden.</translation>
    </message>
    <message>
        <source>Show this text and end.</source>
        <translation>Diesen Text zeigen und enden.</translation>
    </message>
    <message>
        <source>--%1: expected a value, found none</source>
        <translation>--%1: erwartet wird ein Wert, gefunden wurde keiner</translation>
    </message>
    <message>
        <source>--seconds: expected a number above 0 and up to %1, found &quot;%2&quot;</source>
        <translation>--seconds: erwartet wird eine Zahl größer als 0 und höchstens %1, gefunden wurde „%2“</translation>
    </message>
    <message>
        <source>--size: expected WIDTHxHEIGHT with sides of 1 to %1, for example 1000x600, found &quot;%2&quot;</source>
        <translation>--size: erwartet wird BREITExHÖHE mit Seiten von 1 bis %1, zum Beispiel 1000x600, gefunden wurde „%2“</translation>
    </message>
    <message>
        <source>--seed: expected a whole number from 0 to 4294967295, found &quot;%1&quot;</source>
        <translation>--seed: erwartet wird eine ganze Zahl von 0 bis 4294967295, gefunden wurde „%1“</translation>
    </message>
    <message>
        <source>--palette: expected light, dark or system, found &quot;%1&quot;</source>
        <translation>--palette: erwartet wird light, dark oder system, gefunden wurde „%1“</translation>
    </message>
    <message>
        <source>--language: expected %1, found &quot;%2&quot;</source>
        <translation>--language: erwartet wird %1, gefunden wurde „%2“</translation>
    </message>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
    <message>
        <source>Unexpected argument &quot;%1&quot;</source>
        <translation>Unerwartetes Argument „%1“</translation>
    </message>
    <message>
        <source>A container plugin to load, or a folder of them; may be given more than once. Without it, those that came with the program and those in the user&apos;s plugin folder are loaded.</source>
        <translation>Ein zu ladendes Container-Plugin oder ein Ordner mit solchen; darf mehrmals angegeben werden. Sonst werden die geladen, die zum Programm gehören, und die im Plugin-Ordner des Benutzers.</translation>
    </message>
    <message>
        <source>List the plugins, whether they are of use, and end.</source>
        <translation>Die Plugins auflisten, ob sie brauchbar sind, und enden.</translation>
    </message>
    <message>
        <source>Look whether this program and its plugins are complete and work, and end.</source>
        <translation>Nachsehen, ob dieses Programm und seine Plugins vollständig sind und arbeiten, und enden.</translation>
    </message>
    <message>
        <source>Show the version and end.</source>
        <translation>Die Version zeigen und enden.</translation>
    </message>
    <message>
        <source>Set up a scene: a name from --list-scenes, or a file with a set-up. Nothing that was kept from earlier runs has a part in it.</source>
        <translation>Eine Szene einrichten: ein Name aus --list-scenes oder eine Datei mit einem Aufbau. Was aus früheren Läufen aufbewahrt ist, spielt dabei keine Rolle.</translation>
    </message>
    <message>
        <source>Usage: xy-plot-workbench [options] [FILE]

A stand-in host for container plugins, with simulated motor-controller modules.
FILE is a set-up to open, as the File menu saves it.
Without a display it runs a scene off screen, saves a picture of its window and ends.

Options:
</source>
        <translation>Aufruf: xy-plot-workbench [Optionen] [DATEI]

Ein Ersatz-Hostprogramm für Container-Plugins, mit simulierten Motorsteuerungsmodulen.
DATEI ist ein Aufbau, wie ihn das Menü Datei speichert.
Ohne Bildschirm läuft eine Szene unsichtbar ab, ein Bild ihres Fensters wird gespeichert, und das Programm endet.

Optionen:
</translation>
    </message>
    <message>
        <source>Where to save that picture, a PNG of the whole container; default ./xy-plot.png.</source>
        <translation>Wohin dieses Bild gespeichert wird, ein PNG des ganzen Containers; Vorgabe ./xy-plot.png.</translation>
    </message>
    <message>
        <source>--picture: expected the name of a PNG file, found &quot;%1&quot;</source>
        <translation>--picture: erwartet wird der Name einer PNG-Datei, gefunden wurde „%1“</translation>
    </message>
    <message>
        <source>Add a Modbus device: modbus-tcp:HOST:PORT/UNIT,MAP or modbus-rtu:PORT:BAUD[:PARITY[:STOPBITS]]/UNIT,MAP, where MAP is its register map; may be given more than once. Without --scene the first two values of an axis are drawn.</source>
        <translation>Ein Modbus-Gerät hinzufügen: modbus-tcp:HOST:PORT/UNIT,MAP oder modbus-rtu:PORT:BAUD[:PARITY[:STOPBITS]]/UNIT,MAP; MAP ist seine Registerbelegung. Darf mehrfach vorkommen. Ohne --scene werden die ersten beiden Werte einer Achse gezeichnet.</translation>
    </message>
    <message>
        <source>Colours of the windows: light, dark or system; by default as chosen in the View menu.</source>
        <translation>Farben der Fenster: light, dark oder system; sonst wie im Menü Ansicht gewählt.</translation>
    </message>
    <message>
        <source>Language of the workbench: de or en; by default as chosen in the View menu.</source>
        <translation>Sprache der Werkbank: de oder en; sonst wie im Menü Ansicht gewählt.</translation>
    </message>
    <message>
        <source>Play a recording: a CSV file that was logged, or any other with a header line. Its curves are shown, or those of --scene when that is given.</source>
        <translation>Eine Aufzeichnung abspielen: eine protokollierte CSV-Datei oder eine andere mit Kopfzeile. Gezeigt werden ihre Kurven, oder die von --scene, wenn das angegeben ist.</translation>
    </message>
</context>
<context>
    <name>PanelDocks</name>
    <message>
        <source>Modules</source>
        <translation>Module</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>Exchanges</source>
        <translation>Abfragen</translation>
    </message>
    <message>
        <source>Bring the panel to the front, or hide it when it is there</source>
        <translation>Das Bedienfeld nach vorn holen, oder verbergen, wenn es dort ist</translation>
    </message>
</context>
<context>
    <name>PlaybackRow</name>
    <message>
        <source>Recording: %1</source>
        <translation>Aufzeichnung: %1</translation>
    </message>
    <message>
        <source>One row back</source>
        <translation>Eine Zeile zurück</translation>
    </message>
    <message>
        <source>One row on</source>
        <translation>Eine Zeile weiter</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Take the recording out and forget it; its file stays</source>
        <translation>Die Aufzeichnung herausnehmen und vergessen; ihre Datei bleibt</translation>
    </message>
    <message>
        <source>%1: close</source>
        <translation>%1: schließen</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>At its end the recording begins again</source>
        <translation>Am Ende beginnt die Aufzeichnung von vorn</translation>
    </message>
    <message>
        <source>Speed; 1 plays a row each time that containers sample, every 14 ms</source>
        <translation>Geschwindigkeit; bei 1 wird jedes Mal, wenn Container abtasten, eine Zeile abgespielt, alle 14 ms</translation>
    </message>
    <message>
        <source>%1: speed</source>
        <translation>%1: Geschwindigkeit</translation>
    </message>
    <message>
        <source>%1: beside which module</source>
        <translation>%1: neben welchem Modul</translation>
    </message>
    <message>
        <source>Offers the values of another module, too, so that both can be in one plot. All sources have to be chosen again then.</source>
        <translation>Bietet auch die Werte eines anderen Moduls an, so dass beide in einem Diagramm sein können. Alle Quellen müssen danach neu gewählt werden.</translation>
    </message>
    <message>
        <source>By itself</source>
        <translation>Für sich</translation>
    </message>
    <message>
        <source>Beside %1</source>
        <translation>Neben %1</translation>
    </message>
    <message>
        <source>Position. Arrow keys: a row; Page keys: a tenth; Home and End: first and last row</source>
        <translation>Position. Pfeiltasten: eine Zeile; Bild-Tasten: ein Zehntel; Pos1 und Ende: erste und letzte Zeile</translation>
    </message>
    <message>
        <source>%1: position</source>
        <translation>%1: Position</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Stay at this row</source>
        <translation>Bei dieser Zeile bleiben</translation>
    </message>
    <message>
        <source>Go on from this row; at the end, from the first one</source>
        <translation>Ab dieser Zeile weiter; am Ende von der ersten an</translation>
    </message>
    <message>
        <source>Row %1 of %2</source>
        <translation>Zeile %1 von %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1, ended</source>
        <translation>%1, zu Ende</translation>
    </message>
</context>
<context>
    <name>PlotMenu</name>
    <message>
        <source>&amp;Plot</source>
        <translation>Dia&amp;gramm</translation>
    </message>
    <message>
        <source>Curve &amp;%1</source>
        <translation>Kurve &amp;%1</translation>
    </message>
    <message>
        <source>Switch curve %1 on or off, as its box above the plot does</source>
        <translation>Kurve %1 ein- oder ausschalten, wie ihr Kästchen über dem Diagramm</translation>
    </message>
    <message>
        <source>&amp;Log to File</source>
        <translation>In Datei auf&amp;zeichnen</translation>
    </message>
    <message>
        <source>Record every new point into a file, or stop that</source>
        <translation>Jeden neuen Punkt in eine Datei schreiben, oder damit aufhören</translation>
    </message>
    <message>
        <source>&amp;Export Table</source>
        <translation>Tabelle &amp;exportieren</translation>
    </message>
    <message>
        <source>Show the collected points as a table that can be copied and saved</source>
        <translation>Die gesammelten Punkte als Tabelle zeigen, die kopiert und gespeichert werden kann</translation>
    </message>
    <message>
        <source>Save &amp;Screenshot</source>
        <translation>Bild &amp;speichern</translation>
    </message>
    <message>
        <source>Save the plot as a picture; Messages says where it is</source>
        <translation>Das Diagramm als Bild speichern; in den Meldungen steht, wo es ist</translation>
    </message>
    <message>
        <source>&amp;Clear Buffer</source>
        <translation>Puffer &amp;leeren</translation>
    </message>
    <message>
        <source>Forget the collected points of all curves</source>
        <translation>Die gesammelten Punkte aller Kurven verwerfen</translation>
    </message>
    <message>
        <source>&amp;Refresh Modules</source>
        <translation>Module &amp;aktualisieren</translation>
    </message>
    <message>
        <source>Read the list of modules again; what was chosen goes on</source>
        <translation>Die Liste der Module neu lesen; was gewählt wurde, läuft weiter</translation>
    </message>
    <message>
        <source>Copy &amp;Picture</source>
        <translation>Bild &amp;kopieren</translation>
    </message>
    <message>
        <source>Copy the plot as a picture, to paste it into another program</source>
        <translation>Das Diagramm als Bild kopieren, um es in ein anderes Programm einzufügen</translation>
    </message>
</context>
<context>
    <name>PluginFile</name>
    <message>
        <source>%1: there is no such plugin file</source>
        <translation>%1: diese Plugin-Datei gibt es nicht</translation>
    </message>
    <message>
        <source>this file is no plugin</source>
        <translation>diese Datei ist kein Plugin</translation>
    </message>
    <message>
        <source>this plugin is made for the interface &quot;%1&quot;, not for &quot;%2&quot;</source>
        <translation>dieses Plugin ist für die Schnittstelle „%1“ gemacht, nicht für „%2“</translation>
    </message>
    <message>
        <source>this plugin does not name its class</source>
        <translation>dieses Plugin nennt seine Klasse nicht</translation>
    </message>
    <message>
        <source>this plugin calls itself &quot;%1&quot;, not &quot;Container&quot;</source>
        <translation>dieses Plugin nennt sich „%1“, nicht „Container“</translation>
    </message>
    <message>
        <source>this plugin cannot be loaded: %1</source>
        <translation>dieses Plugin lässt sich nicht laden: %1</translation>
    </message>
    <message>
        <source>this plugin&apos;s object &quot;%1&quot; is no container</source>
        <translation>das Objekt „%1“ dieses Plugins ist kein Container</translation>
    </message>
    <message>
        <source>this plugin&apos;s object is no &quot;%1&quot;, as which it is announced</source>
        <translation>das Objekt dieses Plugins ist kein „%1“, als das es angekündigt ist</translation>
    </message>
</context>
<context>
    <name>PluginFolders</name>
    <message>
        <source>%1: there is no plugin file in it</source>
        <translation>%1: darin ist keine Plugin-Datei</translation>
    </message>
</context>
<context>
    <name>Program</name>
    <message>
        <source> (--help lists the options)</source>
        <translation> (--help listet die Optionen auf)</translation>
    </message>
    <message>
        <source>There is no display: &quot;%1&quot; runs off screen for %2 s.</source>
        <translation>Es gibt keinen Bildschirm: „%1“ läuft %2 s lang unsichtbar ab.</translation>
    </message>
</context>
<context>
    <name>RecordedModule</name>
    <message>
        <source>%1: the recording has been played to its end</source>
        <translation>%1: Die Aufzeichnung ist bis zum Ende abgespielt</translation>
    </message>
</context>
<context>
    <name>RecordingDriver</name>
    <message>
        <source>no curve got a point to record</source>
        <translation>keine Kurve bekam einen Punkt, der aufzuzeichnen wäre</translation>
    </message>
    <message>
        <source>%1: the recording was ended before its time</source>
        <translation>%1: die Aufzeichnung wurde vorzeitig beendet</translation>
    </message>
    <message>
        <source>the container has no box &quot;%1&quot; to switch a recording on</source>
        <translation>der Container hat kein Kästchen „%1“, um eine Aufzeichnung einzuschalten</translation>
    </message>
    <message>
        <source>the plot window was closed, nothing was recorded</source>
        <translation>das Plotfenster wurde geschlossen, nichts wurde aufgezeichnet</translation>
    </message>
    <message>
        <source>%1: the save dialog did not take this file</source>
        <translation>%1: der Speichern-Dialog hat diese Datei nicht angenommen</translation>
    </message>
</context>
<context>
    <name>RecordingFile</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>es gibt keine solche Datei</translation>
    </message>
    <message>
        <source>expected a file, found a folder</source>
        <translation>erwartet wird eine Datei, das ist ein Ordner</translation>
    </message>
    <message>
        <source>expected a file, found a device or a pipe</source>
        <translation>erwartet wird eine Datei, das ist ein Gerät oder eine Pipe</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>expected at most %1 MiB, found %2</source>
        <translation>erwartet werden höchstens %1 MiB, es sind %2</translation>
    </message>
    <message>
        <source>%1 was removed; what was opened can still be played</source>
        <translation>%1 wurde gelöscht; was geöffnet war, kann weiter abgespielt werden</translation>
    </message>
    <message>
        <source>%1 was cut off; not all of it can be played</source>
        <translation>%1 wurde gekürzt; nicht alles kann abgespielt werden</translation>
    </message>
    <message>
        <source>%1 has grown; take it out and plug it in again to play all of it</source>
        <translation>%1 ist gewachsen; herausnehmen und wieder einstecken, um alles abzuspielen</translation>
    </message>
    <message>
        <source>%1 was written to since it was opened</source>
        <translation>%1 wurde seit dem Öffnen beschrieben</translation>
    </message>
    <message>
        <source>%1 has become shorter since it was opened</source>
        <translation>%1 ist seit dem Öffnen kürzer geworden</translation>
    </message>
    <message>
        <source>%1 has changed since it was opened</source>
        <translation>%1 hat sich seit dem Öffnen geändert</translation>
    </message>
</context>
<context>
    <name>RecordingFormat</name>
    <message>
        <source>a header line with the names of the columns</source>
        <translation>eine Kopfzeile mit den Namen der Spalten</translation>
    </message>
    <message>
        <source>an empty file</source>
        <translation>eine leere Datei</translation>
    </message>
    <message>
        <source>a line of more than %1 bytes</source>
        <translation>eine Zeile mit mehr als %1 Bytes</translation>
    </message>
    <message>
        <source>&quot;Counter&quot;</source>
        <translation>&quot;Counter&quot;</translation>
    </message>
    <message>
        <source>lines with a counter and two values for each curve</source>
        <translation>Zeilen mit einem Zähler und zwei Werten für jede Kurve</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>the end of the file</source>
        <translation>das Ende der Datei</translation>
    </message>
    <message>
        <source>at most %1 columns</source>
        <translation>höchstens %1 Spalten</translation>
    </message>
    <message>
        <source>The header names %1 curves and the lines hold %2: the names may be those of other curves.</source>
        <translation>Der Kopf nennt %1 Kurven, und die Zeilen enthalten %2: Die Namen können die anderer Kurven sein.</translation>
    </message>
    <message>
        <source>the numbers &quot;%1&quot;</source>
        <translation>die Zahlen „%1“</translation>
    </message>
    <message>
        <source>lines with numbers</source>
        <translation>Zeilen mit Zahlen</translation>
    </message>
    <message>
        <source>Columns that hold text and are left out: %1.</source>
        <translation>Spalten mit Text, die weggelassen werden: %1.</translation>
    </message>
    <message>
        <source>Of the columns, the first %1 are offered and %2 are left out.</source>
        <translation>Von den Spalten werden die ersten %1 angeboten und %2 weggelassen.</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>text in UTF-8</source>
        <translation>Text in UTF-8</translation>
    </message>
    <message>
        <source>text in UTF-16</source>
        <translation>Text in UTF-16</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>a zero byte</source>
        <translation>ein Null-Byte</translation>
    </message>
    <message>
        <source>line %1: expected %2, found %3</source>
        <translation>Zeile %1: erwartet: %2, gefunden: %3</translation>
    </message>
    <message>
        <source>line %1, column %2: expected %3, found %4</source>
        <translation>Zeile %1, Spalte %2: erwartet: %3, gefunden: %4</translation>
    </message>
</context>
<context>
    <name>RecordingIndex</name>
    <message>
        <source>lines with numbers</source>
        <translation>Zeilen mit Zahlen</translation>
    </message>
    <message>
        <source>the end of the file</source>
        <translation>das Ende der Datei</translation>
    </message>
    <message>
        <source>at most %1 bytes</source>
        <translation>höchstens %1 Bytes</translation>
    </message>
    <message>
        <source>more</source>
        <translation>mehr</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>a zero byte</source>
        <translation>ein Null-Byte</translation>
    </message>
    <message>
        <source>Line %1, the last one, is cut off and left out.</source>
        <translation>Zeile %1, die letzte, ist abgeschnitten und wird weggelassen.</translation>
    </message>
    <message>
        <source>Lines that are damaged and left out: %1. The first is %2.</source>
        <translation>Beschädigte Zeilen, die weggelassen werden: %1. Die erste ist %2.</translation>
    </message>
</context>
<context>
    <name>RecordingOpener</name>
    <message>
        <source>Open Recording</source>
        <translation>Aufzeichnung öffnen</translation>
    </message>
    <message>
        <source>Recordings (*.csv *.txt *.tsv);;All files (*)</source>
        <translation>Aufzeichnungen (*.csv *.txt *.tsv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>RecordingPanel</name>
    <message>
        <source>Lines: %1, bytes: %2</source>
        <translation>Zeilen: %1, Bytes: %2</translation>
    </message>
    <message>
        <source>, last line: %1</source>
        <translation>, letzte Zeile: %1</translation>
    </message>
    <message>
        <source>, not in the file: %1</source>
        <translation>, nicht in der Datei: %1</translation>
    </message>
    <message>
        <source>No container has been opened yet.</source>
        <translation>Noch kein Container wurde geöffnet.</translation>
    </message>
    <message>
        <source>Recordings</source>
        <translation>Aufzeichnungen</translation>
    </message>
    <message>
        <source>%1: path of the log</source>
        <translation>%1: Pfad der Aufzeichnung</translation>
    </message>
    <message>
        <source>The file of the recording that runs, or of the last one</source>
        <translation>Die Datei der laufenden oder der letzten Aufzeichnung</translation>
    </message>
    <message>
        <source>%1:</source>
        <translation>%1:</translation>
    </message>
    <message>
        <source>Last failure, %1</source>
        <translation>Letzter Fehler, %1</translation>
    </message>
    <message>
        <source>, with old values: %1</source>
        <translation>, mit alten Werten: %1</translation>
    </message>
    <message>
        <source>For each container: whether it records, into which file, what has arrived there, and why the last recording ended.</source>
        <translation>Für jeden Container: ob er aufzeichnet, in welche Datei, was dort angekommen ist, und warum die letzte Aufzeichnung endete.</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open the file with the program that the desktop has for it</source>
        <translation>Die Datei mit dem Programm öffnen, das der Desktop dafür hat</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Open the folder that the file is in</source>
        <translation>Den Ordner öffnen, in dem die Datei ist</translation>
    </message>
</context>
<context>
    <name>RecordingWatch</name>
    <message>
        <source>1 line</source>
        <translation>1 Zeile</translation>
    </message>
    <message>
        <source>%1 lines</source>
        <translation>%1 Zeilen</translation>
    </message>
    <message>
        <source>The box is checked, but nothing is being recorded since the window was opened again</source>
        <translation>Das Kästchen ist angekreuzt, aber seit dem erneuten Öffnen des Fensters wird nichts aufgezeichnet</translation>
    </message>
    <message>
        <source>The box is checked; into which file is not known</source>
        <translation>Das Kästchen ist angekreuzt; in welche Datei, ist nicht bekannt</translation>
    </message>
    <message>
        <source>Not recording</source>
        <translation>Keine Aufzeichnung</translation>
    </message>
    <message>
        <source>Recording into %1 rests: nothing is sampled while the window is hidden</source>
        <translation>Aufzeichnung in %1 ruht: Solange das Fenster verborgen ist, wird nichts abgetastet</translation>
    </message>
    <message>
        <source>The box is checked, but nothing is being recorded: %1 could not be opened</source>
        <translation>Das Kästchen ist angekreuzt, aber nichts wird aufgezeichnet: %1 ließ sich nicht öffnen</translation>
    </message>
    <message>
        <source>The box is checked, but nothing is being recorded: %1 could not be opened: %2</source>
        <translation>Das Kästchen ist angekreuzt, aber nichts wird aufgezeichnet: %1 ließ sich nicht öffnen: %2</translation>
    </message>
    <message>
        <source>%1 has vanished; the next line will begin it anew, without a header</source>
        <translation>%1 ist verschwunden; die nächste Zeile legt die Datei neu an, ohne Kopfzeilen</translation>
    </message>
    <message>
        <source>%1 has vanished: %2; lines are being lost</source>
        <translation>%1 ist verschwunden: %2; Zeilen gehen verloren</translation>
    </message>
    <message>
        <source>%1 cannot be written any more: %2; lines are being lost</source>
        <translation>%1 lässt sich nicht mehr schreiben: %2; Zeilen gehen verloren</translation>
    </message>
    <message>
        <source>%1 sampled but not in %2: %3</source>
        <translation>%1 abgetastet, aber nicht in %2: %3</translation>
    </message>
    <message>
        <source>%1 was replaced while recording: its header and earlier lines are gone</source>
        <translation>%1 wurde während der Aufzeichnung ersetzt: Kopfzeilen und frühere Zeilen sind weg</translation>
    </message>
    <message>
        <source>Recording into %1, which cannot be read back: what arrives there is not known</source>
        <translation>Aufzeichnung in %1, das sich nicht zurücklesen lässt: Was dort ankommt, ist nicht bekannt</translation>
    </message>
    <message>
        <source>%1 was opened, but its header could not be written</source>
        <translation>%1 wurde geöffnet, aber die Kopfzeilen ließen sich nicht schreiben</translation>
    </message>
    <message>
        <source>%1 sampled but not in %2; the reason is not known</source>
        <translation>%1 abgetastet, aber nicht in %2; der Grund ist nicht bekannt</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 was replaced while recording: its header and %2 are gone</source>
        <translation>%1 wurde während der Aufzeichnung ersetzt: Der Kopf und %2 sind weg</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>%1 with old values</source>
        <translation>%1 mit alten Werten</translation>
    </message>
    <message>
        <source>the window was closed</source>
        <translation>das Fenster wurde geschlossen</translation>
    </message>
    <message>
        <source>the box was unticked</source>
        <translation>das Kästchen wurde abgewählt</translation>
    </message>
    <message>
        <source>Recording into %1</source>
        <translation>Aufzeichnung in %1</translation>
    </message>
    <message>
        <source>curve %1 was switched on</source>
        <translation>Kurve %1 wurde eingeschaltet</translation>
    </message>
    <message>
        <source>curve %1 was switched off</source>
        <translation>Kurve %1 wurde ausgeschaltet</translation>
    </message>
    <message>
        <source>&quot;Show all data&quot; was switched</source>
        <translation>„Alle Daten zeigen“ wurde umgeschaltet</translation>
    </message>
    <message>
        <source>curve %1 got another source</source>
        <translation>Kurve %1 bekam eine andere Quelle</translation>
    </message>
    <message>
        <source>Recording into %1 ended at %2: %3</source>
        <translation>Aufzeichnung in %1 endete um %2: %3</translation>
    </message>
</context>
<context>
    <name>Recordings</name>
    <message>
        <source>Not recording</source>
        <translation>Keine Aufzeichnung</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: %2. The file is %3</source>
        <translation>%1: %2. Die Datei ist %3</translation>
    </message>
</context>
<context>
    <name>RegisterMapCheck</name>
    <message>
        <source>an address that no other value has, but &quot;%1&quot; has it</source>
        <translation>eine Adresse, die kein anderer Wert hat, aber „%1“ hat sie</translation>
    </message>
    <message>
        <source>an address beside that of &quot;%1&quot;, which it overlaps</source>
        <translation>eine Adresse neben der von „%1“, mit der er sich überschneidet</translation>
    </message>
    <message>
        <source>a name that no other value beside it has, but &quot;%1&quot; is also that of %2</source>
        <translation>ein Name, den kein anderer Wert daneben hat, aber „%1“ ist auch der von %2</translation>
    </message>
    <message>
        <source>a name that no value of the module has, but &quot;%1&quot; is also that of %2</source>
        <translation>ein Name, den kein Wert des Moduls hat, aber „%1“ ist auch der von %2</translation>
    </message>
    <message>
        <source>at most %1 values and fields on an axis or in a group</source>
        <translation>höchstens %1 Werte und Felder an einer Achse oder in einer Gruppe</translation>
    </message>
    <message>
        <source>axes from 0 on without a gap, but axis %1 has no value</source>
        <translation>Achsen ab 0 ohne Lücke, aber Achse %1 hat keinen Wert</translation>
    </message>
    <message>
        <source>&quot;register&quot;, because a device without an axis shows registers only</source>
        <translation>&quot;register&quot;, weil ein Gerät ohne Achse nur Register zeigt</translation>
    </message>
</context>
<context>
    <name>RegisterMapReader</name>
    <message>
        <source>one of %1</source>
        <translation>eines von %1</translation>
    </message>
    <message>
        <source>no such field, because an entry of this table is one bit</source>
        <translation>kein solches Feld, weil ein Eintrag dieser Tabelle ein Bit ist</translation>
    </message>
    <message>
        <source>a number other than 0</source>
        <translation>eine Zahl, aber nicht 0</translation>
    </message>
    <message>
        <source>the step in which a float32 is shown, for example 0.001</source>
        <translation>die Schrittweite, in der ein float32 gezeigt wird, zum Beispiel 0.001</translation>
    </message>
    <message>
        <source>a number above 0</source>
        <translation>eine Zahl über 0</translation>
    </message>
    <message>
        <source>no bit fields, because the number is scaled, moved or a float32</source>
        <translation>keine Bitfelder, weil die Zahl skaliert, verschoben oder ein float32 ist</translation>
    </message>
    <message>
        <source>the lowest bit of the field, 0 to %1</source>
        <translation>das niedrigste Bit des Felds, 0 bis %1</translation>
    </message>
    <message>
        <source>a whole number from %1 to %2, or a text with one, such as &quot;0x%3&quot;</source>
        <translation>eine ganze Zahl von %1 bis %2, oder ein Text mit einer, wie &quot;0x%3&quot;</translation>
    </message>
    <message>
        <source>no such field, because the value belongs to an axis</source>
        <translation>kein solches Feld, weil der Wert zu einer Achse gehört</translation>
    </message>
    <message>
        <source>up to %1 characters in one line, without semicolons, and without blanks around them</source>
        <translation>bis zu %1 Zeichen in einer Zeile, ohne Strichpunkte und ohne Leerzeichen darum</translation>
    </message>
    <message>
        <source>up to %1 characters</source>
        <translation>bis zu %1 Zeichen</translation>
    </message>
    <message>
        <source>at least one value</source>
        <translation>mindestens ein Wert</translation>
    </message>
</context>
<context>
    <name>RegisterMapRows</name>
    <message>
        <source>Coil</source>
        <translation>Coil</translation>
    </message>
    <message>
        <source>Discrete input</source>
        <translation>Diskreter Eingang</translation>
    </message>
    <message>
        <source>Input register</source>
        <translation>Eingangsregister</translation>
    </message>
    <message>
        <source>Holding register</source>
        <translation>Halteregister</translation>
    </message>
</context>
<context>
    <name>RowDecoder</name>
    <message>
        <source>a closing quote</source>
        <translation>ein schließendes Anführungszeichen</translation>
    </message>
    <message>
        <source>%1 fields</source>
        <translation>%1 Felder</translation>
    </message>
    <message>
        <source>no more than %1 columns</source>
        <translation>nicht mehr als %1 Spalten</translation>
    </message>
    <message>
        <source>a counter</source>
        <translation>ein Zähler</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>the decimal mark of the lines before (&quot;%1&quot;) and no digit grouping</source>
        <translation>das Dezimalzeichen der Zeilen davor („%1“) und keine Zifferngruppen</translation>
    </message>
</context>
<context>
    <name>RunPlan</name>
    <message>
        <source>no scene and no file is called &quot;%1&quot;; the scenes are: %2</source>
        <translation>keine Szene und keine Datei heißt „%1“; die Szenen sind: %2</translation>
    </message>
    <message>
        <source>%1 and %2 lead to the same file: %3</source>
        <translation>%1 und %2 führen zu derselben Datei: %3</translation>
    </message>
    <message>
        <source>%1: cannot save there: %2</source>
        <translation>%1: dorthin lässt sich nicht speichern: %2</translation>
    </message>
</context>
<context>
    <name>Scene</name>
    <message>
        <source>A circle drawn by two axes</source>
        <translation>Ein Kreis, von zwei Achsen gezeichnet</translation>
    </message>
    <message>
        <source>Four curves at once</source>
        <translation>Vier Kurven zugleich</translation>
    </message>
    <message>
        <source>Play in a gear: motor position against encoder</source>
        <translation>Getriebespiel: Motorposition gegen Drehgeber</translation>
    </message>
    <message>
        <source>Velocity over position, the velocity from a register field</source>
        <translation>Geschwindigkeit über Position, die Geschwindigkeit aus einem Registerfeld</translation>
    </message>
    <message>
        <source>One module of each kind</source>
        <translation>Ein Modul von jeder Art</translation>
    </message>
    <message>
        <source>Two modules: a stepper axis against a servo axis</source>
        <translation>Zwei Module: eine Schrittmotorachse gegen eine Servoachse</translation>
    </message>
</context>
<context>
    <name>SceneExchange</name>
    <message>
        <source>the plugin %1 makes no container</source>
        <translation>das Plugin %1 legt keinen Container an</translation>
    </message>
    <message>
        <source>the field &quot;docks&quot; of the window is not as the workbench has written it</source>
        <translation>das Feld „docks“ des Fensters ist nicht so, wie die Werkbank es geschrieben hat</translation>
    </message>
    <message>
        <source>no plugin &quot;%1&quot; is loaded, only: %2</source>
        <translation>kein Plugin „%1“ ist geladen, nur: %2</translation>
    </message>
    <message>
        <source>All was set up again as it was, without the points.</source>
        <translation>Alles wurde wieder aufgebaut, wie es war, ohne die Punkte.</translation>
    </message>
</context>
<context>
    <name>SceneReader</name>
    <message>
        <source>a key that no other module has</source>
        <translation>ein Schlüssel, den kein anderes Modul hat</translation>
    </message>
    <message>
        <source>at most %1 modules</source>
        <translation>höchstens %1 Module</translation>
    </message>
    <message>
        <source>no such field without &quot;containers&quot;</source>
        <translation>kein solches Feld ohne „containers“</translation>
    </message>
    <message>
        <source>no such field beside &quot;containers&quot;, whose entries have it</source>
        <translation>kein solches Feld neben „containers“, deren Einträge es haben</translation>
    </message>
    <message>
        <source>1 to %1 containers</source>
        <translation>1 bis %1 Container</translation>
    </message>
    <message>
        <source>a text in base64, as the workbench has written it</source>
        <translation>ein Text in Base64, wie ihn die Werkbank geschrieben hat</translation>
    </message>
</context>
<context>
    <name>SceneRunner</name>
    <message>
        <source>the module &quot;%1&quot; is not offered, only: %2</source>
        <translation>das Modul „%1“ wird nicht angeboten, nur: %2</translation>
    </message>
    <message>
        <source>the module &quot;%1&quot; has no motor &quot;%2&quot;, only: %3</source>
        <translation>das Modul „%1“ hat keinen Motor „%2“, nur: %3</translation>
    </message>
    <message>
        <source>the module &quot;%1&quot; has no value &quot;%2&quot; under its motor &quot;%3&quot;; the nearest are: %4</source>
        <translation>das Modul „%1“ hat keinen Wert „%2“ unter seinem Motor „%3“; am nächsten kommen: %4</translation>
    </message>
    <message>
        <source>the click on &quot;%1&quot; did not choose it</source>
        <translation>der Klick auf „%1“ hat es nicht ausgewählt</translation>
    </message>
    <message>
        <source>the value &quot;%1&quot; cannot be read as signed</source>
        <translation>der Wert „%1“ lässt sich nicht vorzeichenbehaftet lesen</translation>
    </message>
    <message>
        <source>the plot window has %1 curves, the set-up needs more</source>
        <translation>das Plotfenster hat %1 Kurven, der Aufbau braucht mehr</translation>
    </message>
    <message>
        <source>curve %1, %2: </source>
        <translation>Kurve %1, %2: </translation>
    </message>
    <message>
        <source>the plot has boxes for %1 curves, the set-up needs %2</source>
        <translation>das Diagramm hat Kästchen für %1 Kurven, der Aufbau braucht %2</translation>
    </message>
    <message>
        <source>the container has no %1 called &quot;%2&quot;, which a set-up needs</source>
        <translation>der Container hat kein %1 namens „%2“, das ein Aufbau braucht</translation>
    </message>
    <message>
        <source>the module &quot;%1&quot; has no value &quot;%2&quot;; the nearest are: %3</source>
        <translation>das Modul „%1“ hat keinen Wert „%2“; am nächsten kommen: %3</translation>
    </message>
</context>
<context>
    <name>SceneWriter</name>
    <message>
        <source>%1: cannot be saved: %2</source>
        <translation>%1: lässt sich nicht speichern: %2</translation>
    </message>
</context>
<context>
    <name>SelfTest</name>
    <message>
        <source>line %1 is &quot;%2&quot;</source>
        <translation>Zeile %1 lautet „%2“</translation>
    </message>
    <message>
        <source>drawings: the SVG image plugin of Qt draws the arrow of the boxes</source>
        <translation>Zeichnungen: das SVG-Bild-Plugin von Qt zeichnet den Pfeil der Auswahlfelder</translation>
    </message>
    <message>
        <source>picture: %1x%2 pixels</source>
        <translation>Bild: %1x%2 Bildpunkte</translation>
    </message>
    <message>
        <source>curve %1: drawn with %2 pixels</source>
        <translation>Kurve %1: gezeichnet mit %2 Bildpunkten</translation>
    </message>
    <message>
        <source>log: %1: %2</source>
        <translation>Aufzeichnung: %1: %2</translation>
    </message>
    <message>
        <source>log: %1 lines below the header, %2 were recorded</source>
        <translation>Aufzeichnung: %1 Zeilen unter dem Kopf, %2 wurden aufgezeichnet</translation>
    </message>
    <message>
        <source>log: every line is whole and in its place</source>
        <translation>Aufzeichnung: jede Zeile ist ganz und an ihrem Platz</translation>
    </message>
    <message>
        <source>log: %1</source>
        <translation>Aufzeichnung: %1</translation>
    </message>
    <message>
        <source>container: &quot;%1&quot; opens and shows something</source>
        <translation>Container: „%1“ öffnet sich und zeigt etwas</translation>
    </message>
</context>
<context>
    <name>ShortcutList</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>All keys of the workbench. In the plot, - and + go through the zooms and the arrow keys move the view.</source>
        <translation>Alle Tasten der Werkbank. Im Diagramm gehen - und + durch die Zooms, und die Pfeiltasten verschieben die Ansicht.</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Was er tut</translation>
    </message>
</context>
<context>
    <name>SimulatedModuleRow</name>
    <message>
        <source>Moving</source>
        <translation>Fährt</translation>
    </message>
    <message>
        <source>Off: the axes brake and stay where they are</source>
        <translation>Aus: Die Achsen bremsen und bleiben stehen</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>A silent module gets requests and answers none</source>
        <translation>Ein stummes Modul erhält Anfragen und beantwortet keine</translation>
    </message>
    <message>
        <source>%1: time of an answer</source>
        <translation>%1: Zeit einer Antwort</translation>
    </message>
    <message>
        <source>How long the module takes for each answer. A slow one is asked less often, so that the window goes on; one that is too late counts as not answering.</source>
        <translation>Wie lange das Modul für jede Antwort braucht. Ein langsames wird seltener gefragt, damit das Fenster weiterläuft; kommt die Antwort zu spät, gilt sie als ausgeblieben.</translation>
    </message>
    <message>
        <source>Answers at once</source>
        <translation>Antwortet sofort</translation>
    </message>
    <message>
        <source>Slow: %1 ms</source>
        <translation>Langsam: %1 ms</translation>
    </message>
    <message>
        <source>Too late: %1 ms</source>
        <translation>Zu spät: %1 ms</translation>
    </message>
</context>
<context>
    <name>SimulationFields</name>
    <message>
        <source>a number of microsteps, 0 or more</source>
        <translation>eine Zahl von Mikroschritten, mindestens 0</translation>
    </message>
    <message>
        <source>a number of seconds above 0</source>
        <translation>eine Zahl von Sekunden größer als 0</translation>
    </message>
    <message>
        <source>no motion, because %1 has no axes</source>
        <translation>keine Bewegung, denn %1 hat keine Achsen</translation>
    </message>
    <message>
        <source>0, because %1 has this axis only</source>
        <translation>0, denn %1 hat nur diese Achse</translation>
    </message>
    <message>
        <source>a whole number from 0 to %1, the axes of %2</source>
        <translation>eine ganze Zahl von 0 bis %1, die Achsen von %2</translation>
    </message>
    <message>
        <source>an axis that has no motion yet</source>
        <translation>eine Achse, die noch keine Bewegung hat</translation>
    </message>
</context>
<context>
    <name>SourceWatch</name>
    <message>
        <source>the source of curve %1 is switched off</source>
        <translation>die Quelle von Kurve %1 ist abgeschaltet</translation>
    </message>
    <message>
        <source>the sources of the curves %1 are switched off</source>
        <translation>die Quellen der Kurven %1 sind abgeschaltet</translation>
    </message>
    <message>
        <source>%1: %2; choose module and motor again</source>
        <translation>%1: %2; bitte Modul und Motor neu wählen</translation>
    </message>
    <message>
        <source>%1 was taken out at %2</source>
        <translation>%1 wurde um %2 herausgenommen</translation>
    </message>
    <message>
        <source>%1 was plugged in at %2</source>
        <translation>%1 wurde um %2 eingesteckt</translation>
    </message>
</context>
<context>
    <name>StatusSummary</name>
    <message>
        <source>%1 answers/s</source>
        <translation>%1 Antworten/s</translation>
    </message>
    <message>
        <source>, not answering: %1</source>
        <translation>, antwortet nicht: %1</translation>
    </message>
    <message>
        <source>%1 of %2 modules plugged in</source>
        <translation>%1 von %2 Modulen eingesteckt</translation>
    </message>
    <message>
        <source>Modules that containers find, of those that are listed</source>
        <translation>Module, die Container finden, von denen in der Liste</translation>
    </message>
    <message>
        <source>Answers that came from all modules in a second</source>
        <translation>Antworten, die in einer Sekunde von allen Modulen kamen</translation>
    </message>
</context>
<context>
    <name>TimedRun</name>
    <message>
        <source>the run was ended before its time</source>
        <translation>der Lauf wurde vorzeitig beendet</translation>
    </message>
    <message>
        <source>the plot window was closed before the run was over</source>
        <translation>das Plotfenster wurde vor dem Ende des Laufs geschlossen</translation>
    </message>
    <message>
        <source>%1: cannot save the picture: %2</source>
        <translation>%1: das Bild lässt sich nicht speichern: %2</translation>
    </message>
</context>
<context>
    <name>WorkbenchRun</name>
    <message>
        <source>the plot window cannot be %1x%2, it needs at least %3x%4</source>
        <translation>das Plotfenster kann nicht %1x%2 groß sein, es braucht mindestens %3x%4</translation>
    </message>
    <message>
        <source>Lines recorded: %1; the log is %2</source>
        <translation>Aufgezeichnete Zeilen: %1; die Aufzeichnung ist %2</translation>
    </message>
    <message>
        <source>Answers read: %1; the picture is %2</source>
        <translation>Gelesene Antworten: %1; das Bild ist %2</translation>
    </message>
    <message>
        <source>%1: this plugin makes no container</source>
        <translation>%1: dieses Plugin liefert keinen Container</translation>
    </message>
    <message>
        <source>plugin: %1</source>
        <translation>Plugin: %1</translation>
    </message>
    <message>
        <source>scene: &quot;%1&quot; ran for %2 s and was recorded</source>
        <translation>Szene: „%1“ lief %2 s lang und wurde aufgezeichnet</translation>
    </message>
    <message>
        <source>%1: lines with old values, because a module did not answer: %2</source>
        <translation>%1: Zeilen mit alten Werten, weil ein Modul nicht antwortete: %2</translation>
    </message>
</context>
<context>
    <name>Workspace</name>
    <message>
        <source>Workspace</source>
        <translation>Arbeitsfläche</translation>
    </message>
    <message>
        <source>The windows of the containers. &quot;Tile&quot; in the menu &quot;Containers&quot; shows them all.</source>
        <translation>Die Fenster der Container. „Nebeneinander“ im Menü „Container“ zeigt alle.</translation>
    </message>
</context>
<context>
    <name>WriteObstacle</name>
    <message>
        <source>it is a folder</source>
        <translation>es ist ein Ordner</translation>
    </message>
    <message>
        <source>there is no such folder</source>
        <translation>diesen Ordner gibt es nicht</translation>
    </message>
    <message>
        <source>writing is not allowed</source>
        <translation>Schreiben ist nicht erlaubt</translation>
    </message>
    <message>
        <source>the file system is read-only</source>
        <translation>das Dateisystem ist schreibgeschützt</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>nobody reads from this pipe</source>
        <translation>niemand liest aus dieser Pipe</translation>
    </message>
    <message>
        <source>it is a device or a pipe, no file that could be replaced</source>
        <translation>es ist ein Gerät oder eine Pipe, keine Datei, die ersetzt werden könnte</translation>
    </message>
</context>
</TS>
