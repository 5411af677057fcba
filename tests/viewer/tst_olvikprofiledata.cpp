#include "OlvikProfileData.h"

#include <QtTest>

#include <new>

class TestOlvikProfileData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesOutliveTheOriginalAndTheHostsBuffer()
    {
        OlvikProfileData copy;
        QVERIFY(!copy.GetRawPtr());
        {
            std::vector<float> heights{1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f};
            const OlvikProfileData original(3, 2, heights.data());
            heights.assign(6, -1.0f);
            copy = original;
            QCOMPARE(copy.GetRawPtr(), original.GetRawPtr());
        }
        QCOMPARE(copy.GetWidth(), 3);
        QCOMPARE(copy.GetHeight(), 2);
        QCOMPARE(copy.GetRawPtr()[0], 1.0f);
        QCOMPARE(copy.GetRawPtr()[5], 6.0f);
    }

    void negativeProductsThrowBeforeReading_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("negative width") << -1 << 5;
        QTest::newRow("negative height") << 5 << -1;
        QTest::newRow("wraps below zero") << 46341 << 46341;
    }

    void negativeProductsThrowBeforeReading()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        float *nowhere = nullptr;
        QVERIFY_EXCEPTION_THROWN(
            OlvikProfileData(width, height, nowhere), std::bad_array_new_length);
    }
};

QTEST_GUILESS_MAIN(TestOlvikProfileData)
#include "tst_olvikprofiledata.moc"
