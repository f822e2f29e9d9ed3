// Loading a window's QML so that a failure ends the program.
#pragma once

class QQmlApplicationEngine;
class QUrl;

// Loads `url`. When its root object cannot be made, the event loop ends with
// -1 instead of running on without a window. GUI thread.
void loadWindow(QQmlApplicationEngine &engine, const QUrl &url);
