#include "pc/own_variables.h"

#include <QStringList>

namespace own_variables {

namespace {

QStringList &names()
{
    static QStringList own;
    return own;
}

// What children shall find, and this process not.
QProcessEnvironment &inherited()
{
    static QProcessEnvironment hidden;
    return hidden;
}

} // namespace

// Here there is only one environment, and who starts a program leaves them out.
void set(const char *name, const QByteArray &value)
{
    qputenv(name, value);
    names().append(QString::fromLatin1(name));
}

void hide(const char *name)
{
    if (!qEnvironmentVariableIsSet(name))
        return;
    inherited().insert(QString::fromLatin1(name), qEnvironmentVariable(name));
    qunsetenv(name);
}

QProcessEnvironment forChildren()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(inherited());
    for (const QString &name : qAsConst(names()))
        environment.remove(name);
    return environment;
}

} // namespace own_variables
