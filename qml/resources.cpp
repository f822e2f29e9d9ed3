#include "qml/resources.h"

#include <QtCore/qglobal.h>

// Q_INIT_RESOURCE declares a function of the global namespace.
static void initAll()
{
    Q_INIT_RESOURCE(kolm_qml);
}

namespace qml {

void initResources()
{
    initAll();
}

} // namespace qml
