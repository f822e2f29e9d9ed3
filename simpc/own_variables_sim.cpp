#include "pc/own_variables.h"

#include <QStringList>

namespace own_variables {

namespace {

QStringList &names()
{
    static QStringList own;
    return own;
}

} // namespace

// Here there is only one environment, and who starts a program leaves them out.
void set(const char *name, const QByteArray &value)
{
    qputenv(name, value);
    names().append(QString::fromLatin1(name));
}

QProcessEnvironment forChildren()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : qAsConst(names()))
        environment.remove(name);
    return environment;
}

} // namespace own_variables
