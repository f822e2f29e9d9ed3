// What the pages see of the program, and when, written down line by line.
#pragma once

class QQmlApplicationEngine;

namespace face_record {

// With SIMPC_FACE set, appends to that file from now on (demonstration/README.md has
// the lines): each log line, and what is written into the working folder and the
// program's own, in the order of the thread on which it happens. Once a process, on
// the GUI thread.
void begin();

// From now on also what the objects that pages see are like, and each signal that they
// emit, until `engine` ends. To be called before the first page is loaded: what a page
// is answered, and what comes of it, is then in the record. Nothing without begin().
void follow(QQmlApplicationEngine &engine);

} // namespace face_record
