<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>mod_progress_qt::CustomProgressBar</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>mod_progress_qt::ProgressDialog</name>
    <message>
        <source>Adding %1</source>
        <translation>%1 wird addiert</translation>
    </message>
    <message>
        <source>Step %1 of %2</source>
        <translation>Schritt %1 von %2</translation>
    </message>
    <message>
        <source>A function on a thread</source>
        <translation>Eine Funktion in einem Thread</translation>
    </message>
    <message>
        <source>Working...</source>
        <translation>In Arbeit...</translation>
    </message>
    <message>
        <source>A worker of its own class</source>
        <translation>Eine eigene Worker-Klasse</translation>
    </message>
    <message>
        <source>Adding...</source>
        <translation>Zahlen werden addiert...</translation>
    </message>
    <message>
        <source>A loop on the GUI thread</source>
        <translation>Eine Schleife im GUI-Thread</translation>
    </message>
    <message>
        <source>Reading...</source>
        <translation>Dateien werden gelesen...</translation>
    </message>
    <message>
        <source>Info:</source>
        <translation>Hinweis:</translation>
    </message>
    <message>
        <source>There are active processes running....</source>
        <translation>Es laufen noch Vorgänge.</translation>
    </message>
    <message>
        <source>Processing data...</source>
        <translation>Daten werden verarbeitet...</translation>
    </message>
</context>
</TS>
