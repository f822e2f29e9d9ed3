// Takes the single-instance lock, says whether it is the first copy, and keeps
// what it has until its standard input ends. With an argument it first starts
// that program as a child that outlives it.
#include "pc/single_instance.h"

#include <QProcess>

#include <iostream>
#include <string>

int main(int argc, char *argv[])
{
    const SingleInstance instance;
    if (argc > 1)
        QProcess::startDetached(QString::fromLocal8Bit(argv[1]), {QStringLiteral("20")});
    std::cout << (instance.isFirst() ? "first" : "second") << std::endl;
    std::string line;
    while (std::getline(std::cin, line)) {
    }
    return 0;
}
