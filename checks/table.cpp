#include "checks/table.h"

const checks::Table &checks::table()
{
    static const Table rows = [] {
        Table all;
        for (const Table &part :
             {hardwareChecks(), steamChecks(), networkChecks(), usbChecks(), powerAndSoundChecks()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
    return rows;
}
