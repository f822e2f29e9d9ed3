#include "app/start_up.h"
#include "app/surroundings.h"
#include "pc/foreign_settings.h"
#include "pc/library_search.h"
#include "sysinfo/system_info.h"

int main(int argc, char *argv[])
{
    library_search::trustOwnFoldersOnly(SystemInfo::assistantVersion());
    foreign_settings::ignore();
    Surroundings none;
    return runAssistant(argc, argv, none);
}
