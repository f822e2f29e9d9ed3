// Being asked to end from outside.
#pragma once

// From now on the application's event loop quits when the process is told to
// end, instead of the process ending on the spot. Once, on the main thread,
// with the application object there.
void quitOnStopRequest();
