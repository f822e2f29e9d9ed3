// Which of two versions of the assistant is the newer one.
#pragma once

#include <QString>

// Whether `remote` is newer than `own`: the first of their common positions
// that differs decides, numbers between dots, and anything else counts as 0.
// With fewer than three positions in common it is not newer. An own version
// with exactly two underscores counts with the part between them and then the
// part behind them.
bool isNewerVersion(const QString &own, const QString &remote);
