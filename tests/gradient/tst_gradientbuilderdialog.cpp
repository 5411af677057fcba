#include "GuiTest.h"

#include "ColorSelection.h"
#include "Gradient.h"
#include "GradientBuilderDialog.h"
#include "GradientBuilderWidget.h"
#include "GradientColor.h"

#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <functional>
#include <memory>
#include <stdexcept>

namespace {

const QColor belowColor(1, 2, 3);
const QColor aboveColor(4, 5, 6);

std::shared_ptr<Gradient> blackToWhite()
{
    auto gradient = std::make_shared<Gradient>();
    gradient->setName("before");
    gradient->setMin(10, belowColor);
    gradient->setMax(90, aboveColor);
    gradient->addStop(0.0F, Qt::black);
    gradient->addStop(1.0F, Qt::white);
    return gradient;
}

/// The dialog on screen and its parts as the user finds them.
class Opened
{
public:
    Opened(double min, double max)
        : target(blackToWhite())
        , dialog(target, min, max, belowColor, aboveColor, nullptr)
    {
        dialog.show();
        isExposed = QTest::qWaitForWindowExposed(&dialog);
    }

    QLineEdit *field(const QString &label)
    {
        const auto labels = dialog.findChildren<QLabel *>();
        for (QLabel *candidate : labels) {
            if (candidate->text() == label)
                return qobject_cast<QLineEdit *>(candidate->buddy());
        }
        return nullptr;
    }

    void type(const QString &label, const QString &text)
    {
        field(label)->selectAll();
        QTest::keyClick(field(label), Qt::Key_Delete);
        QTest::keyClicks(field(label), text);
    }

    void click(const QString &button)
    {
        const auto buttons = dialog.findChildren<QPushButton *>();
        for (QPushButton *candidate : buttons) {
            if (candidate->text() == button)
                QTest::mouseClick(candidate, Qt::LeftButton);
        }
    }

    QLabel *label(const QString &part)
    {
        const auto labels = dialog.findChildren<QLabel *>();
        for (QLabel *candidate : labels) {
            if (candidate->text().contains(part))
                return candidate;
        }
        return nullptr;
    }

    std::shared_ptr<Gradient> target;
    GradientBuilderDialog dialog;
    bool isExposed = false;
};

/// Does something to the next box of a kind that takes over the program.
template <class Box> class Answer : public QObject
{
public:
    explicit Answer(std::function<void(Box &)> wanted)
        : give(std::move(wanted))
    {
        connect(&timer, &QTimer::timeout, this, &Answer::look);
        // Xvfb runs no window manager: a box that closes at once leaves a warning about the focus.
        timer.start(200);
    }

    bool isGiven = false;

private:
    void look()
    {
        auto *box = qobject_cast<Box *>(QApplication::activeModalWidget());
        if (!box)
            return;
        timer.stop();
        isGiven = true;
        give(*box);
    }

    std::function<void(Box &)> give;
    QTimer timer;
};

/// Notes what a message box says and closes it.
class Reader
{
public:
    QString title;
    QString text;

    bool isShown() const { return answer.isGiven; }

private:
    Answer<QMessageBox> answer{[this](QMessageBox &box) {
        title = box.windowTitle();
        text = box.text();
        box.accept();
    }};
};

class ScaledFont
{
public:
    explicit ScaledFont(double scale)
        : before(QApplication::font())
    {
        QFont scaled = before;
        scaled.setPointSizeF(before.pointSizeF() * scale);
        QApplication::setFont(scaled);
    }
    ~ScaledFont() { QApplication::setFont(before); }

private:
    QFont before;
};

class CommaLocale
{
public:
    CommaLocale() { QLocale::setDefault(QLocale(QLocale::German)); }
    ~CommaLocale() { QLocale::setDefault(QLocale::c()); }
};

} // namespace

class TestGradientBuilderDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesAGradientWithoutEnds();
    void showsWhatItWasGiven();
    void confirmationStoresEverythingAtOnce();
    void cancelLeavesTheTargetAlone();
    void boundsThatMakeNoRangeAreRefused_data();
    void boundsThatMakeNoRangeAreRefused();
    void boundsAreStoredAsWholeNumbers();
    void aFailedSaveKeepsTheDialogOpenAndTheTargetAsItWas();
    void nameFollowsBothWays();
    void boundTakesWhatCanBeTyped_data();
    void boundTakesWhatCanBeTyped();
    void setBoundLeavesTheText();
    void doubleClickOnTheBoxChangesTheColour_data();
    void doubleClickOnTheBoxChangesTheColour();
    void helpOpensAndClosesByItsLink();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void tabReachesTheFieldsInReadingOrder();
    void enterConfirms();
};

void TestGradientBuilderDialog::refusesAGradientWithoutEnds()
{
    using Missing = GradientBuilderWidget::GradientMissingStartEndException;
    const auto empty = std::make_shared<Gradient>();
    QVERIFY_EXCEPTION_THROWN(
        GradientBuilderDialog(empty, 0, 1, belowColor, aboveColor, nullptr), Missing);
    QVERIFY_EXCEPTION_THROWN(
        GradientBuilderDialog(nullptr, 0, 1, belowColor, aboveColor, nullptr), Missing);
    QVERIFY_EXCEPTION_THROWN(GradientBuilderDialog(static_cast<QWidget *>(nullptr)), Missing);
    QVERIFY_EXCEPTION_THROWN(GradientBuilderDialog(7UL, nullptr), Missing);
}

void TestGradientBuilderDialog::showsWhatItWasGiven()
{
    Opened opened(2.5, 1234567);
    QCOMPARE(opened.field("Name")->text(), QString("before"));
    QCOMPARE(opened.field("Min bound")->text(), QString("2.5"));
    QCOMPARE(opened.field("Max bound")->text(), QString("1.23457e+06"));
    QCOMPARE(opened.dialog.getMax(), 1234567.0);
    QCOMPARE(opened.dialog.getMinColor(), belowColor);
    QCOMPARE(opened.dialog.getMaxColor(), aboveColor);
    QVERIFY(opened.dialog.getCurrentGradient() != opened.target);
}

void TestGradientBuilderDialog::confirmationStoresEverythingAtOnce()
{
    Opened opened(10, 90);
    QSignalSpy updated(opened.target.get(), &Gradient::updated);
    opened.type("Name", "after");
    opened.type("Min bound", "20");
    opened.type("Max bound", "80");
    opened.dialog.findChild<GradientBuilderWidget *>()->addStop(0.5F, Qt::red);
    QCOMPARE(updated.count(), 0);

    opened.click("&Ok");
    QCOMPARE(opened.dialog.result(), int(QDialog::Accepted));
    QVERIFY(!opened.dialog.isVisible());
    QCOMPARE(updated.count(), 1);
    QCOMPARE(opened.target->getName(), QString("after"));
    QCOMPARE(opened.target->getMin(), 20.0);
    QCOMPARE(opened.target->getMax(), 80.0);
    QCOMPARE(opened.target->getMinColor(), belowColor);
    QCOMPARE(opened.target->getMaxColor(), aboveColor);
    QVERIFY(opened.target->isStop(0.5));
}

void TestGradientBuilderDialog::cancelLeavesTheTargetAlone()
{
    Opened opened(10, 90);
    QSignalSpy updated(opened.target.get(), &Gradient::updated);
    opened.type("Name", "after");
    opened.type("Max bound", "80");
    opened.dialog.findChild<GradientBuilderWidget *>()->addStop(0.5F, Qt::red);

    opened.click("&Cancel");
    QVERIFY(!opened.dialog.isVisible());
    QCOMPARE(opened.dialog.result(), int(QDialog::Rejected));
    QCOMPARE(updated.count(), 0);
    QCOMPARE(opened.target->getName(), QString("before"));
    QCOMPARE(opened.target->getMax(), 90.0);
    QVERIFY(!opened.target->isStop(0.5));
}

void TestGradientBuilderDialog::boundsThatMakeNoRangeAreRefused_data()
{
    QTest::addColumn<QString>("min");
    QTest::addColumn<QString>("max");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");

    const QString enter("Please enter min and/or max values (bounds)");
    const QString check("Please check Bound values");
    QTest::newRow("both 0") << "0"
                            << "0"
                            << "Enter Bounds" << enter;
    QTest::newRow("both empty") << ""
                                << ""
                                << "Enter Bounds" << enter;
    QTest::newRow("equal") << "5"
                           << "5"
                           << "Bound Error" << check;
    QTest::newRow("reversed") << "6"
                              << "5"
                              << "Bound Error" << check;
    QTest::newRow("upper 0") << "0.5"
                             << "0"
                             << "Bound Error" << check;
}

void TestGradientBuilderDialog::boundsThatMakeNoRangeAreRefused()
{
    QFETCH(const QString, min);
    QFETCH(const QString, max);
    Opened opened(10, 90);
    QVERIFY(opened.isExposed);
    opened.type("Min bound", min);
    opened.type("Max bound", max);

    const Reader message;
    opened.click("&Ok");
    QTEST(message.title, "title");
    QTEST(message.text, "text");
    QVERIFY(opened.dialog.isVisible());
    QCOMPARE(opened.target->getMin(), 10.0);
}

void TestGradientBuilderDialog::boundsAreStoredAsWholeNumbers()
{
    Opened opened(0, 0.5);
    opened.click("&Ok");
    QVERIFY(!opened.dialog.isVisible());
    QCOMPARE(opened.target->getMin(), 0.0);
    QCOMPARE(opened.target->getMax(), 0.0);
}

void TestGradientBuilderDialog::aFailedSaveKeepsTheDialogOpenAndTheTargetAsItWas()
{
    Opened opened(10, 90);
    QVERIFY(opened.isExposed);
    bool isDiskFull = true;
    connect(opened.target.get(), &Gradient::updated, this, [&isDiskFull] {
        if (isDiskFull)
            throw std::runtime_error("disk full");
    });
    opened.type("Name", "after");

    const Reader message;
    opened.click("&Ok");
    QVERIFY(message.isShown());
    QVERIFY(opened.dialog.isVisible());
    QCOMPARE(opened.target->getName(), QString("before"));

    isDiskFull = false;
    opened.click("&Ok");
    QVERIFY(!opened.dialog.isVisible());
    QCOMPARE(opened.target->getName(), QString("after"));
}

void TestGradientBuilderDialog::nameFollowsBothWays()
{
    Opened opened(10, 90);
    QSignalSpy changed(&opened.dialog, &GradientBuilderDialog::gradientNameChanged);
    opened.dialog.setGradientName("set");
    QCOMPARE(opened.field("Name")->text(), QString("set"));
    QCOMPARE(changed.count(), 1);

    opened.type("Name", "typed");
    QCOMPARE(opened.dialog.getGradientName(), QString("typed"));
    QCOMPARE(changed.count(), 1);
}

void TestGradientBuilderDialog::boundTakesWhatCanBeTyped_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("bound");

    QTest::newRow("decimals") << "12.25"
                              << "12.25" << 12.25;
    QTest::newRow("no third decimal") << "0.125"
                                      << "0.12" << 0.12;
    QTest::newRow("no sign") << "-3"
                             << "3" << 3.0;
    QTest::newRow("no comma") << "1,5"
                              << "15" << 15.0;
    QTest::newRow("no letters") << "a7"
                                << "7" << 7.0;
    QTest::newRow("nothing is 0") << ""
                                  << "" << 0.0;
}

void TestGradientBuilderDialog::boundTakesWhatCanBeTyped()
{
    const CommaLocale locale;
    QFETCH(const QString, keys);
    Opened opened(10, 90);
    opened.type("Min bound", keys);
    QTEST(opened.field("Min bound")->text(), "text");
    QTEST(opened.dialog.getMin(), "bound");
}

void TestGradientBuilderDialog::setBoundLeavesTheText()
{
    ColorSelection selection("Bound", 7, belowColor, nullptr);
    selection.setBound(8);
    QCOMPARE(selection.getBound(), 8.0);
    QCOMPARE(selection.findChild<QLineEdit *>()->text(), QString("7"));
}

void TestGradientBuilderDialog::doubleClickOnTheBoxChangesTheColour_data()
{
    QTest::addColumn<QColor>("answer");
    QTest::addColumn<QColor>("expected");

    QTest::newRow("confirmed, with alpha") << QColor(9, 8, 7, 100) << QColor(9, 8, 7, 100);
    QTest::newRow("cancelled") << QColor() << belowColor;
}

void TestGradientBuilderDialog::doubleClickOnTheBoxChangesTheColour()
{
    QFETCH(const QColor, answer);
    QFETCH(const QColor, expected);
    ColorSelection selection("Bound", 7, belowColor, nullptr);
    selection.show();
    QVERIFY(QTest::qWaitForWindowExposed(&selection));

    QString title;
    QColor offered;
    const Answer<QColorDialog> user([&](QColorDialog &dialog) {
        title = dialog.windowTitle();
        offered = dialog.currentColor();
        if (!answer.isValid())
            return dialog.reject();
        dialog.setCurrentColor(answer);
        dialog.accept();
    });
    auto *box = selection.findChild<GradientColor *>();
    QTest::mouseDClick(box, Qt::LeftButton);
    QCOMPARE(title, QString("Select Color for bound"));
    QCOMPARE(offered, belowColor);
    QCOMPARE(selection.getCurrentColor(), expected);
    QCOMPARE(box->palette().color(QPalette::Disabled, QPalette::Window), expected);
}

void TestGradientBuilderDialog::helpOpensAndClosesByItsLink()
{
    Opened opened(10, 90);
    QLabel *help = opened.label("Hints to use gradients: ");
    QLabel *link = opened.label("href=\"help\"");
    const int height = opened.dialog.height();
    for (int round = 0; round < 2; ++round) {
        QVERIFY(!help->isVisible());
        QVERIFY(link->text().contains(">Show Help &gt;&gt;&gt;<"));

        link->setFocus();
        QTest::keyClick(link, Qt::Key_Tab);
        QTest::keyClick(link, Qt::Key_Return);
        QVERIFY(help->isVisible());
        QVERIFY(link->text().contains(">Hide Help &lt;&lt;&lt;<"));
        QTRY_VERIFY(opened.dialog.height() > height);

        Q_EMIT link->linkActivated("help");
        QTRY_COMPARE(opened.dialog.height(), height);
    }
}

void TestGradientBuilderDialog::nothingIsCutOff_data()
{
    QTest::addColumn<double>("scale");

    QTest::newRow("usual font") << 1.0;
    QTest::newRow("large font") << 1.5;
}

void TestGradientBuilderDialog::nothingIsCutOff()
{
    QFETCH(const double, scale);
    const ScaledFont font(scale);
    Opened opened(10, 100);
    Q_EMIT opened.label("href=\"help\"")->linkActivated("help");
    QCoreApplication::processEvents();

    const auto labels = opened.dialog.findChildren<QLabel *>();
    for (QLabel *label : labels) {
        QVERIFY2(label->height() >= label->minimumSizeHint().height(), qPrintable(label->text()));
        QVERIFY2(label->width() >= label->minimumSizeHint().width(), qPrintable(label->text()));
    }
    const auto fields = opened.dialog.findChildren<QLineEdit *>();
    for (QLineEdit *field : fields)
        QVERIFY(field->height() >= field->sizeHint().height());
    QVERIFY(opened.field("Max bound")->width() == 50);
    QVERIFY(opened.dialog.findChild<GradientBuilderWidget *>()->height() >= 100);
}

void TestGradientBuilderDialog::tabReachesTheFieldsInReadingOrder()
{
    Opened opened(10, 90);
    QApplication::setActiveWindow(&opened.dialog);
    QStringList reached;
    for (int step = 0; step < 5; ++step) {
        QWidget *widget = QApplication::focusWidget();
        QVERIFY(widget);
        const QVariant text = widget->property("text");
        reached.append(text.toString());
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    QCOMPARE(reached, (QStringList{"before", "10", "90", "&Ok", "&Cancel"}));
}

void TestGradientBuilderDialog::enterConfirms()
{
    Opened opened(10, 90);
    opened.type("Name", "after");
    QTest::keyClick(opened.field("Name"), Qt::Key_Return);
    QCOMPARE(opened.dialog.result(), int(QDialog::Accepted));
    QCOMPARE(opened.target->getName(), QString("after"));
}

OLVIK_GUI_TEST_MAIN(TestGradientBuilderDialog)
#include "tst_gradientbuilderdialog.moc"
