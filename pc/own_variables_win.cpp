#include "pc/own_variables.h"

#include <windows.h>

#include <map>
#include <optional>
#include <string>

namespace own_variables {

namespace {

struct Variable
{
    QByteArray own;                        // null: this process does without it
    std::optional<std::wstring> inherited; // what children find
};
using Variables = std::map<QByteArray, Variable>;

Variables &variables()
{
    static Variables all;
    return all;
}

std::wstring widened(const QByteArray &text)
{
    return QString::fromLatin1(text).toStdWString();
}

// The environment that the system hands on to whatever is started.
std::optional<std::wstring> inherited(const QByteArray &name)
{
    const std::wstring key = widened(name);
    const DWORD size = GetEnvironmentVariableW(key.c_str(), nullptr, 0);
    if (size == 0)
        return std::nullopt;
    std::wstring value(size, 0);
    value.resize(GetEnvironmentVariableW(key.c_str(), value.data(), size));
    return value;
}

void showThisProcess(const QByteArray &name, const QByteArray &own)
{
    SetEnvironmentVariableA(name.constData(), own.isNull() ? nullptr : own.constData());
}

void change(const QByteArray &name, const QByteArray &own)
{
    // Some C libraries make the whole copy anew from the system's with every
    // change, and the one in wide letters when somebody asks for it first.
    for (const auto &[earlier, its] : variables())
        showThisProcess(earlier, its.own);
    const auto known = variables().find(name);
    const auto forChildren = known == variables().end() ? inherited(name) : known->second.inherited;
    if (own.isNull())
        qunsetenv(name);
    else
        qputenv(name, own);
    static_cast<void>(qEnvironmentVariable(name));
    variables()[name] = {own, forChildren};
    for (const auto &[one, its] : variables())
        SetEnvironmentVariableW(widened(one).c_str(),
                                its.inherited ? its.inherited->c_str() : nullptr);
}

} // namespace

// There are two environments: the system's, which children inherit, and the C
// library's copy of it, which Qt reads. Setting a variable puts it into both.
void set(const char *name, const QByteArray &value)
{
    change(name, value);
}

void hide(const char *name)
{
    change(name, QByteArray());
}

QProcessEnvironment forChildren()
{
    return QProcessEnvironment::systemEnvironment();
}

} // namespace own_variables
