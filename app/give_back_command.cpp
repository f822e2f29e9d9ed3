#include "app/give_back_command.h"

#include "pc/single_instance.h"
#include "session/change_record.h"

#include <QCoreApplication>
#include <QLatin1String>

#include <algorithm>

std::optional<int> giveBackIfAsked(int &argc, char **argv)
{
    const bool isAsked = std::any_of(argv, argv + argc, [](const char *argument) {
        return QLatin1String(argument) == QLatin1String("--give-back");
    });
    if (!isAsked)
        return std::nullopt;
    const QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("KOLM"));
    const SingleInstance instance;
    if (!instance.isFirst())
        return 2;
    return ChangeRecord::instance().giveBackAll() ? 0 : 1;
}
