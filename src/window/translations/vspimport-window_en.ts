<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>DetailsText</name>
    <message numerus="yes">
        <source>%n channel(s)</source>
        <translation>
            <numerusform>%n channel</numerusform>
            <numerusform>%n channels</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n chapter(s)</source>
        <translation>
            <numerusform>%n chapter</numerusform>
            <numerusform>%n chapters</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n clip(s)</source>
        <translation>
            <numerusform>%n clip</numerusform>
            <numerusform>%n clips</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>… and %n more</source>
        <translation>
            <numerusform>… and %n more</numerusform>
            <numerusform>… and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FailureBar</name>
    <message numerus="yes">
        <source>%n could not be imported.</source>
        <translation>
            <numerusform>%n could not be imported.</numerusform>
            <numerusform>%n could not be imported.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ImportBar</name>
    <message numerus="yes">
        <source>%n of other kinds passed over</source>
        <translation>
            <numerusform>%n of another kind passed over</numerusform>
            <numerusform>%n of other kinds passed over</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>%1 of %n item(s) — vspimport</source>
        <translation>
            <numerusform>%1 of %n item — vspimport</numerusform>
            <numerusform>%1 of %n items — vspimport</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) — vspimport</source>
        <translation>
            <numerusform>%n item — vspimport</numerusform>
            <numerusform>%n items — vspimport</numerusform>
        </translation>
    </message>
</context>
</TS>
