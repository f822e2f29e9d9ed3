#include "base/manual_clock.h"
#include "demonstration/progress_printer.h"
#include "tests/support/test_case.h"

#include <thread>
#include <vector>

class TestProgressPrinter : public TestCase
{
    Q_OBJECT

private slots:
    void lineHasTheTimeSinceTheRunBegan()
    {
        ManualClock clock;
        ProgressPrinter printer(clock, print());
        clock.advance(5000);
        printer.begin();
        printer.say("first frame");
        clock.advance(1540);
        printer.say("[x] Steam runs");
        clock.advance(120000);
        printer.say(QString::fromUtf8("耳机 found"));
        QCOMPARE(printed_, (std::vector<std::string>{"progress:    0.0 s  first frame",
                                                     "progress:    1.5 s  [x] Steam runs",
                                                     "progress:  121.5 s  耳机 found"}));
    }

    void whatComesBeforeIsKeptAndPrintedOnce()
    {
        ManualClock clock;
        ProgressPrinter printer(clock, print());
        printer.say("cell write 0");
        clock.advance(700);
        printer.say("Steam appears");
        QCOMPARE(printed_, std::vector<std::string>());
        printer.begin();
        const std::vector<std::string> kept = {"progress:    0.0 s  cell write 0",
                                               "progress:    0.0 s  Steam appears"};
        QCOMPARE(printed_, kept);
        clock.advance(300);
        printer.say("SteamVR starts");
        QCOMPARE(printed_.size(), kept.size() + 1);
        QCOMPARE(printed_.back(), std::string("progress:    0.3 s  SteamVR starts"));
    }

    void linesOfSeveralThreadsAreAllPrinted()
    {
        ManualClock clock;
        ProgressPrinter printer(clock, print());
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

private:
    std::vector<std::string> printed_;
    ProgressPrinter::Print print()
    {
        printed_.clear();
        return [this](const std::string &line) { printed_.push_back(line); };
    }
};

KOLM_TEST_MAIN(TestProgressPrinter)
#include "tst_progress_printer.moc"
