#include "base/manual_clock.h"
#include "demonstration/road_printer.h"
#include "tests/support/test_case.h"

#include <thread>
#include <vector>

class TestRoadPrinter : public TestCase
{
    Q_OBJECT

private slots:
    void lineHasTheTimeSinceTheRoadBegan();
    void whatComesBeforeIsKeptAndPrintedOnce();
    void linesOfSeveralThreadsAreAllPrinted();

private:
    std::vector<std::string> printed_;
    RoadPrinter::Print print()
    {
        printed_.clear();
        return [this](const std::string &line) { printed_.push_back(line); };
    }
};

void TestRoadPrinter::lineHasTheTimeSinceTheRoadBegan()
{
    ManualClock clock;
    RoadPrinter printer(clock, print());
    clock.advance(5000);
    printer.begin();
    printer.say("first frame");
    clock.advance(1540);
    printer.say("[x] Steam runs");
    clock.advance(120000);
    printer.say(QString::fromUtf8("耳机 found"));
    QCOMPARE(printed_, (std::vector<std::string>{"road:    0.0 s  first frame",
                                                 "road:    1.5 s  [x] Steam runs",
                                                 "road:  121.5 s  耳机 found"}));
}

void TestRoadPrinter::whatComesBeforeIsKeptAndPrintedOnce()
{
    ManualClock clock;
    RoadPrinter printer(clock, print());
    printer.say("cell write 0");
    clock.advance(700);
    printer.say("Steam appears");
    QCOMPARE(printed_, std::vector<std::string>());
    printer.begin();
    const std::vector<std::string> kept = {"road:    0.0 s  cell write 0",
                                           "road:    0.0 s  Steam appears"};
    QCOMPARE(printed_, kept);
    clock.advance(300);
    printer.say("SteamVR starts");
    QCOMPARE(printed_.size(), kept.size() + 1);
    QCOMPARE(printed_.back(), std::string("road:    0.3 s  SteamVR starts"));
}

void TestRoadPrinter::linesOfSeveralThreadsAreAllPrinted()
{
    ManualClock clock;
    RoadPrinter printer(clock, print());
    constexpr int threads = 4;
    constexpr int lines = 200;
    std::vector<std::thread> all;
    for (int i = 0; i < threads; ++i) {
        all.emplace_back([&printer] {
            for (int n = 0; n < lines; ++n)
                printer.say("x");
        });
    }
    printer.begin();
    for (std::thread &thread : all)
        thread.join();
    QCOMPARE(int(printed_.size()), threads * lines);
}

KOLM_TEST_MAIN(TestRoadPrinter)
#include "tst_road_printer.moc"
