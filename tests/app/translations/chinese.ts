<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>Test</name>
    <message>
        <source>串流助手</source>
        <translation>Streaming assistant</translation>
    </message>
</context>
</TS>
