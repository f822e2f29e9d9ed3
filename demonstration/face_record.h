// What the pages see of the program, and when, written down line by line.
#pragma once

class QQmlApplicationEngine;

namespace face_record {

// With SIMPC_FACE set, appends to that file from now on (demonstration/README.md has
// the lines): what the objects that pages see are like, each signal that they
// emit, each log line, and what is written into the working folder and the
// program's own, in the order of the thread on which it happens. What was there
// before is not in it: signals of the objects' constructors, for example. Once
// a process, on the GUI thread; the signals end with `engine`.
void begin(QQmlApplicationEngine &engine);

} // namespace face_record
