#include "controller/vr_list_model.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

class TestVRListModel : public TestCase
{
    Q_OBJECT

    static QStringList names(const VRListModel &model)
    {
        QStringList result;
        for (int row = 0; row < model.rowCount(); ++row)
            result << model.data(model.index(row), VRListModel::NameRole).toString();
        return result;
    }

private slots:
    void theLastReportedHeadsetComesFirst()
    {
        VRListModel model;
        model.refill({{"first", "1", false}, {"second", "2", false}, {"third", "3", false}}, {});
        QCOMPARE(names(model), QStringList({"third", "second", "first"}));
        QCOMPARE(model.firstName(), QString("third"));
    }

    void aHeadsetWithoutSerialIsNeverListed()
    {
        VRListModel model;
        model.refill({{"", "10.0.0.1", true}, {"D3", "10.0.0.2", false}, {"", "", false}}, {});
        QCOMPARE(names(model), QStringList{"D3"});
        model.refill({{"", "", false}}, {});
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(model.firstName(), QString());
    }

    void aRecentHeadsetIsMarkedByItsExactSerial()
    {
        VRListModel model;
        model.refill({{"d3a", "", false}, {"D3A", "", false}}, {"D3A", "D3B"});
        QCOMPARE(model.data(model.index(0), VRListModel::RecentRole), QVariant(true));
        QCOMPARE(model.data(model.index(1), VRListModel::RecentRole), QVariant(false));
    }

    void theRolesHaveTheirNumbersNamesAndTypes()
    {
        VRListModel model;
        model.refill({{"D3A", "10.0.0.7", true}}, {});
        const QHash<int, QByteArray> expected{
            {256, "vrState"}, {257, "vrName"}, {258, "ip"}, {259, "isRecent"}};
        QCOMPARE(model.roleNames(), expected);
        QCOMPARE(model.data(model.index(0), 256), QVariant(true));
        QCOMPARE(model.data(model.index(0), 257), QVariant(QString("D3A")));
        QCOMPARE(model.data(model.index(0), 258), QVariant(QString("10.0.0.7")));
        QCOMPARE(model.data(model.index(0), 259), QVariant(false));
    }

    void anythingElseGivesAnInvalidVariant()
    {
        VRListModel model;
        model.refill({{"D3A", "10.0.0.7", true}}, {});
        QVERIFY(!model.data(model.index(0), 260).isValid());
        QVERIFY(!model.data(model.index(0), Qt::DisplayRole).isValid());
        QVERIFY(!model.data(QModelIndex(), 257).isValid());
        const QModelIndex row = model.index(0);
        model.refill({}, {});
        QVERIFY(!model.data(row, 257).isValid());
        model.refill({{"D3A", "10.0.0.7", true}}, {});
        QCOMPARE(model.rowCount(model.index(0)), 0);
    }

    void everyRefillIsOneReset()
    {
        VRListModel model;
        QSignalSpy about(&model, &QAbstractItemModel::modelAboutToBeReset);
        QSignalSpy done(&model, &QAbstractItemModel::modelReset);
        model.refill({{"D3A", "", false}}, {});
        model.refill({}, {});
        QCOMPARE(about.size(), 2);
        QCOMPARE(done.size(), 2);
    }
};

KOLM_TEST_MAIN(TestVRListModel)
#include "tst_vr_list_model.moc"
