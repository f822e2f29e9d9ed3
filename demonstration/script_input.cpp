#include "demonstration/script_input.h"

#include <QSocketNotifier>

#include <unistd.h>

ScriptInput::ScriptInput(int descriptor, QObject *parent)
    : QObject(parent), descriptor_(descriptor),
      notifier_(new QSocketNotifier(descriptor, QSocketNotifier::Read, this))
{
    connect(notifier_, &QSocketNotifier::activated, this, &ScriptInput::readOn);
}

void ScriptInput::readOn()
{
    char bytes[4096];
    const ssize_t count = read(descriptor_, bytes, sizeof bytes);
    if (count > 0)
        emit arrived(QByteArray(bytes, static_cast<int>(count)));
    else
        notifier_->setEnabled(false);
}
