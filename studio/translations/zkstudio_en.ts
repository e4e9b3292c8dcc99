<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>zk::app::ClipCommands</name>
    <message numerus="yes">
        <source>%n file(s) could not be imported</source>
        <translation>
            <numerusform>%n file could not be imported</numerusform>
            <numerusform>%n files could not be imported</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Import %n file(s)</source>
        <translation>
            <numerusform>Import %n file</numerusform>
            <numerusform>Import %n files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::ClipProperties</name>
    <message numerus="yes">
        <source>%1 (%n frame(s))</source>
        <translation>
            <numerusform>%1 (%n frame)</numerusform>
            <numerusform>%1 (%n frames)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::ErasingBar</name>
    <message numerus="yes">
        <source>%n saved selection(s)</source>
        <translation>
            <numerusform>%n saved selection</numerusform>
            <numerusform>%n saved selections</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::ErasingDesk</name>
    <message numerus="yes">
        <source>Give up %n erasing(s)?</source>
        <translation>
            <numerusform>Give up %n erasing?</numerusform>
            <numerusform>Give up %n erasings?</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::ExportDialog</name>
    <message numerus="yes">
        <source>%n clip(s) exported.</source>
        <translation>
            <numerusform>%n clip exported.</numerusform>
            <numerusform>%n clips exported.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::ExportForm</name>
    <message numerus="yes">
        <source>%n clip(s), each in its own size and rate</source>
        <translation>
            <numerusform>%n clip in its own size and rate</numerusform>
            <numerusform>%n clips, each in its own size and rate</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n frame(s)</source>
        <translation>
            <numerusform>%n frame</numerusform>
            <numerusform>%n frames</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::Prompts</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zk::app::RecoveryDialog</name>
    <message numerus="yes">
        <source>%1 – %2, %n clip(s)</source>
        <translation>
            <numerusform>%1 – %2, %n clip</numerusform>
            <numerusform>%1 – %2, %n clips</numerusform>
        </translation>
    </message>
</context>
</TS>
