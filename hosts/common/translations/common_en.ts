<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>CalendarText</name>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n day</numerusform>
            <numerusform>%n days</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>every %n years</source>
        <translation>
            <numerusform>every year</numerusform>
            <numerusform>every %n years</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>every %n months</source>
        <translation>
            <numerusform>every month</numerusform>
            <numerusform>every %n months</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>every %n weeks</source>
        <translation>
            <numerusform>every week</numerusform>
            <numerusform>every %n weeks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>every %n days</source>
        <translation>
            <numerusform>every day</numerusform>
            <numerusform>every %n days</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>every %n hours</source>
        <translation>
            <numerusform>every hour</numerusform>
            <numerusform>every %n hours</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>every %n minutes</source>
        <translation>
            <numerusform>every minute</numerusform>
            <numerusform>every %n minutes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>every %n seconds</source>
        <translation>
            <numerusform>every second</numerusform>
            <numerusform>every %n seconds</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %n times</source>
        <translation>
            <numerusform>%1, %n times</numerusform>
            <numerusform>%1, %n times</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n other days</source>
        <translation>
            <numerusform>%n other day</numerusform>
            <numerusform>%n other days</numerusform>
        </translation>
    </message>
</context>
</TS>
