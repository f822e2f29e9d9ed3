#include "res/resources.h"

#include <QtCore/qglobal.h>

// Q_INIT_RESOURCE declares a function of the global namespace.
static void initAll()
{
    Q_INIT_RESOURCE(kolm_res);
    Q_INIT_RESOURCE(kolm_font);
}

namespace res {

void initResources()
{
    initAll();
}

} // namespace res
