#include "controller/usage_events.h"

namespace {

// Index 0 is the smooth definition, yet it is counted as "High": reports stay
// comparable with those of earlier versions.
QString graphicsQuality(int definitionIndex)
{
    switch (definitionIndex) {
    case 0:
        return QStringLiteral("High");
    case 1:
        return QStringLiteral("Standard");
    case 2:
        return QStringLiteral("Smooth");
    default:
        return QStringLiteral("Auto");
    }
}

} // namespace

void UsageEvents::report(const char *eventId, const QJsonObject &extraData) const
{
    if (report_)
        report_(QString::fromLatin1(eventId), extraData);
}

void UsageEvents::programStarted() const
{
    report("streamingAssistant_streaming_streamingType_0_0_page_view");
}

void UsageEvents::streamMode(LinkKind link, bool isSwitch) const
{
    if (isSwitch) {
        report(isWired(link) ? "streamingAssistant_streaming_wiredStreaming_orbGlasses_"
                               "switchToWirelessStreaming_pit_click"
                             : "streamingAssistant_streaming_wirelessStreaming_orbGlasses_"
                               "switchToWiredStreaming_pit_click");
    } else {
        report(isWired(link)
                   ? "streamingAssistant_streaming_streamingType_wiredStreaming_start_pit_click"
                   : "streamingAssistant_streaming_streamingType_wirelessStreaming_start_pit_"
                     "click");
    }
}

void UsageEvents::modeViewed(LinkKind link, bool isAvailable) const
{
    report(isWired(link) ? "streamingAssistant_streaming_wiredStreaming_0_0_page_view"
                         : "streamingAssistant_streaming_wirelessStreaming_0_0_page_view",
           {{QStringLiteral("is_available"), isAvailable}});
}

void UsageEvents::steamAppEnded(int seconds, const QString &appName, LinkKind link) const
{
    report("streamingAssistant_steamvr_0_0_0_module_pend",
           {{QStringLiteral("duration"), seconds},
            {QStringLiteral("streamingApp"), appName},
            {QStringLiteral("streamingType"),
             isWired(link) ? QStringLiteral("wired") : QStringLiteral("wireless")},
            {QStringLiteral("fps"), start_.highFrameRate ? 90 : 72},
            {QStringLiteral("microphoneOn"), start_.audio},
            {QStringLiteral("graphicsQuality"),
             isWired(link) ? QStringLiteral("Wired") : graphicsQuality(start_.definitionIndex)}});
}

void UsageEvents::programClosed(qint64 seconds) const
{
    report("streamingAssistant_streaming_0_0_0_module_pend",
           {{QStringLiteral("duration"), seconds}});
}
