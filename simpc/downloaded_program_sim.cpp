#include "pc/downloaded_program.h"

#include "simpc/sim_pc.h"

#include <QFileInfo>

namespace downloaded_program {

// Nothing on this PC looks at the note.
bool mark(const QString &path, const QString &)
{
    return QFileInfo(path).isFile();
}

bool open(const QString &path)
{
    return SimPc::current().launches.start({path, {}, false}).started;
}

QString signerOf(const QString &)
{
    return SimPc::current().facts.installerSigner.get();
}

} // namespace downloaded_program
