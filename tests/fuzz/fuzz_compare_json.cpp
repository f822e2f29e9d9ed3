// Any bytes as "compare.json": a score that there is, and AV1 only for a good
// card.
#include "config/hardware_rules.h"
#include "tests/fuzz/require.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const std::optional<QJsonObject> rules = hardware_rules::parse(text);
    if (!rules)
        return 0;
    const QString card = QStringLiteral("NVIDIA GeForce RTX 4070");
    const hardware_rules::Score score =
        hardware_rules::score(*rules, QStringLiteral("Intel(R) Core(TM) i7-9700 CPU"), card);
    REQUIRE(score.processor == 0 || score.processor == 1 || score.processor == 4);
    REQUIRE(score.graphics == 0 || score.graphics == 4 || score.graphics == 8);
    if (hardware_rules::namesAv1Card(*rules, card))
        REQUIRE(score.graphics == 8);
    return 0;
}
