#include "pc/own_variables.h"

#include <windows.h>

#include <map>

namespace own_variables {

namespace {

using Variables = std::map<QByteArray, QByteArray>;

Variables &variables()
{
    static Variables own;
    return own;
}

// The environment that the system hands on to whatever is started.
void setInherited(const QByteArray &name, const char *value)
{
    SetEnvironmentVariableA(name.constData(), value);
}

} // namespace

// There are two environments: the system's, which children inherit, and the C
// library's copy of it, which Qt reads. Setting a variable puts it into both.
void set(const char *name, const QByteArray &value)
{
    // Some C libraries make the whole copy anew from the system's with every
    // change, and the one in wide letters when somebody asks for it first.
    for (const auto &[earlier, its] : variables())
        setInherited(earlier, its.constData());
    qputenv(name, value);
    static_cast<void>(qEnvironmentVariable(name));
    variables()[name] = value;
    for (const auto &[own, its] : variables())
        setInherited(own, nullptr);
}

QProcessEnvironment forChildren()
{
    return QProcessEnvironment::systemEnvironment();
}

} // namespace own_variables
