// What others may have written into the environment.
#pragma once

#include <QByteArray>

namespace foreign_settings {

// Whether a variable of that name would have Qt, or the TLS library, load somebody's
// code, or show the program in another language or another way than the system says.
// Which of its own ways of drawing Qt takes may be chosen, and asked for: all of them are
// shipped.
// Pure, any thread.
bool isForeign(const QByteArray &name);

// Has this process do without all of them; programs that we start find them. First
// of all, before Qt reads any.
void ignore();

} // namespace foreign_settings
