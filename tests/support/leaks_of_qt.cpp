// Linked into a program with a screen where leaks are counted: what Qt keeps until
// the end, with all that hangs from it. The stack of an allocation ends at the
// first function of Qt, because its libraries keep no frame pointers; an object
// of ours is therefore reported whoever called for it. Nothing of Qt's core may be
// named here: that would leave out each QObject of ours with the part that Qt
// makes for it.
extern "C" const char *__lsan_default_suppressions();

extern "C" const char *__lsan_default_suppressions()
{
    return // The screen of the offscreen platform.
        "leak:libqoffscreen.so\n"
        // What the X11 platform asks the session for.
        "leak:libdbus-1.so\n"
        // The textures of images, which Qt Quick's software renderer keeps.
        "leak:libQt5Quick.so\n";
}

// A library that is unloaded can no longer be named in the report.
extern "C" int dlclose(void *);

extern "C" int dlclose(void *)
{
    return 0;
}
