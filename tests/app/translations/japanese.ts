<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="zh_CN">
<context>
    <name>Test</name>
    <message>
        <source>串流助手</source>
        <translation>ストリーミングアシスタント</translation>
    </message>
</context>
</TS>
