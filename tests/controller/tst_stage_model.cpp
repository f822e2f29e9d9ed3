#include "controller/connection_stages.h"
#include "controller/stage_model.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

namespace {

const QDateTime noon({2024, 1, 1}, {12, 0});

} // namespace

class TestStageModel : public TestCase
{
    Q_OBJECT

    // One letter a stage: reached, waited for or neither.
    static QString picture(const StageModel &model)
    {
        QString letters;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex index = model.index(row);
            if (model.data(index, StageModel::Reached).toBool())
                letters += model.data(index, StageModel::Waiting).toBool() ? '?' : 'x';
            else
                letters += model.data(index, StageModel::Waiting).toBool() ? 'w' : '.';
        }
        return letters;
    }

private slots:
    void hasARowForEveryStage()
    {
        const ConnectionStages stages;
        const StageModel model(stages);
        QCOMPARE(model.rowCount(), stageCount);
        QCOMPARE(model.rowCount(model.index(0)), 0);
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names.append(model.data(model.index(row), StageModel::Name).toString());
        QCOMPARE(names, (QStringList{"Steam", "SteamVR", QString::fromUtf8("串流服务"),
                                     QString::fromUtf8("VR眼镜"), QString::fromUtf8("串流连接")}));
        QVERIFY(!model.data(model.index(0), StageModel::Since).toDateTime().isValid());
        QVERIFY(!model.data(model.index(0), StageModel::Since + 1).isValid());
        QVERIFY(!model.data(QModelIndex(), StageModel::Name).isValid());
    }

    void namesItsRolesForThePages()
    {
        const ConnectionStages stages;
        const QHash<int, QByteArray> names = StageModel(stages).roleNames();
        QCOMPARE(names.size(), 4);
        QCOMPARE(names.value(StageModel::Name), QByteArray("name"));
        QCOMPARE(names.value(StageModel::Reached), QByteArray("reached"));
        QCOMPARE(names.value(StageModel::Waiting), QByteArray("waiting"));
        QCOMPARE(names.value(StageModel::Since), QByteArray("since"));
    }

    void saysWhereItHangs_data()
    {
        QTest::addColumn<QList<bool>>("reached");
        QTest::addColumn<QString>("letters");
        QTest::addColumn<int>("done");
        QTest::addColumn<QString>("waitingFor");

        QTest::newRow("nothing") << QList<bool>{false, false, false, false, false} << "w...." << 0
                                 << "Steam";
        QTest::newRow("Steam") << QList<bool>{true, false, false, false, false} << "xw..." << 1
                               << "SteamVR";
        QTest::newRow("SteamVR") << QList<bool>{true, true, false, false, false} << "xxw.." << 2
                                 << QString::fromUtf8("串流服务");
        QTest::newRow("a headset that is not connected")
            << QList<bool>{true, true, true, true, false} << "xxxxw" << 4
            << QString::fromUtf8("串流连接");
        QTest::newRow("a gap") << QList<bool>{true, false, true, false, false} << "xwx.." << 1
                               << "SteamVR";
        QTest::newRow("all") << QList<bool>{true, true, true, true, true} << "xxxxx" << 5
                             << QString();
    }
    void saysWhereItHangs()
    {
        QFETCH(QList<bool>, reached);
        QFETCH(QString, letters);
        QFETCH(int, done);
        QFETCH(QString, waitingFor);

        ConnectionStages stages;
        const StageModel model(stages);
        stages.update({reached[0], reached[1], reached[2], reached[3], reached[4]}, noon);
        QCOMPARE(picture(model), letters);
        QCOMPARE(model.done(), done);
        QCOMPARE(model.waitingFor(), waitingFor);
    }

    void tellsSinceWhen()
    {
        ConnectionStages stages;
        const StageModel model(stages);
        stages.update({}, noon);
        stages.update({true, false, false, false, false}, noon.addSecs(5));
        QCOMPARE(model.data(model.index(0), StageModel::Since).toDateTime(), noon.addSecs(5));
        QCOMPARE(model.data(model.index(1), StageModel::Since).toDateTime(), noon);
        QCOMPARE(model.waitingSince(), noon);
        stages.update({true, true, true, true, true}, noon.addSecs(10));
        QVERIFY(!model.waitingSince().isValid());
    }

    // Whatever is announced is drawn.
    void announcesNewsAndOnlyNews()
    {
        ConnectionStages stages;
        StageModel model(stages);
        QSignalSpy data(&model, &StageModel::dataChanged);
        QSignalSpy changed(&model, &StageModel::changed);
        stages.update({}, noon);
        QCOMPARE(data.size(), 1);
        QCOMPARE(data[0][0].toModelIndex().row(), 0);
        QCOMPARE(data[0][1].toModelIndex().row(), stageCount - 1);
        QCOMPARE(changed.size(), 1);
        stages.update({}, noon.addSecs(5));
        QCOMPARE(data.size(), 1);
        stages.update({true, false, false, false, false}, noon.addSecs(10));
        QCOMPARE(data.size(), 2);
        QCOMPARE(changed.size(), 2);
    }
};

KOLM_TEST_MAIN(TestStageModel)
#include "tst_stage_model.moc"
