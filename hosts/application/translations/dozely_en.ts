<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>%n schedule(s) could not be applied and keep their changes here.</source>
        <translation>
            <numerusform>%n schedule could not be applied and keeps its changes here.</numerusform>
            <numerusform>%n schedules could not be applied and keep their changes here.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PowerForm</name>
    <message numerus="yes">
        <source> minutes</source>
        <comment>behind a number, with a blank before it</comment>
        <translation>
            <numerusform> minute</numerusform>
            <numerusform> minutes</numerusform>
        </translation>
    </message>
</context>
</TS>
