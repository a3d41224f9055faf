<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AdminText</name>
    <message numerus="yes">
        <source>%n thing(s) are wrong.</source>
        <translation>
            <numerusform>One thing is wrong.</numerusform>
            <numerusform>%n things are wrong.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1 %n times</numerusform>
            <numerusform>%1 %n times</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 at least %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1 at least %n times</numerusform>
            <numerusform>%1 at least %n times</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1; %n entries are none</source>
        <comment>entries of the store</comment>
        <translation>
            <numerusform>%1; %n entry is none</numerusform>
            <numerusform>%1; %n entries are none</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n schedule(s) are named &quot;%1&quot;; use an identifier, as &quot;list&quot; shows them.</source>
        <translation>
            <numerusform>%n schedule is named &quot;%1&quot;; use its identifier, as &quot;list&quot; shows it.</numerusform>
            <numerusform>%n schedules are named &quot;%1&quot;; use an identifier, as &quot;list&quot; shows them.</numerusform>
        </translation>
    </message>
</context>
</TS>
