#include "ui/renderer.h"

#include "base/clock.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

namespace renderer {

namespace {

using namespace std::chrono_literals;

constexpr int oldestUsableVersion = 2;
constexpr auto pauseAfterCrash = 24h;

// Since the mark was left; nothing when there is none.
std::optional<std::chrono::seconds> ageOf(const QString &mark, const Clock &clock)
{
    const QFileInfo file(mark);
    if (!file.exists())
        return std::nullopt;
    return std::chrono::seconds(file.lastModified().secsTo(clock.now()));
}

} // namespace

QString shortcoming(const Probe &probe)
{
    if (!probe.usable)
        return QStringLiteral("there is no OpenGL");
    if (probe.major < oldestUsableVersion)
        return QStringLiteral("OpenGL %1 is too old").arg(probe.major);
    if (!probe.complete)
        return QStringLiteral("OpenGL lacks shaders or buffers");
    return {};
}

Probe probe()
{
    Probe found;
    QOpenGLContext context;
    QOffscreenSurface surface;
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface))
        return found;
    found.usable = true;
    found.major = context.format().majorVersion();
    const QOpenGLFunctions *functions = context.functions();
    found.complete = functions->hasOpenGLFeature(QOpenGLFunctions::Shaders) &&
                     functions->hasOpenGLFeature(QOpenGLFunctions::Buffers) &&
                     functions->hasOpenGLFeature(QOpenGLFunctions::Framebuffers);
    context.doneCurrent();
    return found;
}

bool isChosenByEnvironment()
{
    for (const char *variable :
         {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QT_OPENGL", "QSG_RHI", "QSG_RHI_BACKEND"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            return true;
    }
    return false;
}

bool isTooSoon(std::optional<std::chrono::seconds> sinceCrash)
{
    return sinceCrash && *sinceCrash < pauseAfterCrash;
}

Trial::Trial(const QString &mark, const Clock &clock) : mark_(mark)
{
    if (isChosenByEnvironment())
        return;
    const QString problem = choose(clock);
    if (problem.isEmpty())
        return;
    qWarning().noquote() << "windows are drawn without OpenGL:" << problem;
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
}

Trial::~Trial()
{
    if (marked_)
        QFile::remove(mark_);
}

// What speaks against OpenGL; empty if nothing does.
QString Trial::choose(const Clock &clock)
{
    if (isTooSoon(ageOf(mark_, clock)))
        return QStringLiteral("an earlier start ended when it was tried");
    marked_ = QFile(mark_).open(QIODevice::WriteOnly);
    return shortcoming(probe());
}

} // namespace renderer
