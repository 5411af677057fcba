#include "GuiTest.h"
#include "Operator.h"

#include "Gradient.h"
#include "GradientBuilderWidget.h"
#include "GradientColor.h"
#include "GradientFactory.h"

#include <exception>
#include <functional>
#include <memory>

namespace {

const QColor belowColor(1, 2, 3);
const QColor aboveColor(4, 5, 6);

/// In the order of the dialog.
enum Field { name, minBound, maxBound };
enum Button { ok, cancel };

using Click = std::function<void(QDialog &)>;

/// The dialog on screen.
class Opened
{
public:
    Opened()
        : target(std::make_shared<Gradient>(GradientFactory::BlackAndWhite()))
        , dialog(target, 10, 90, belowColor, aboveColor, nullptr)
    {
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    }

    QString type(Field field, const QString &text)
    {
        auto *edit = dialog.findChildren<QLineEdit *>().at(field);
        edit->clear();
        QTest::keyClicks(edit, text);
        return edit->text();
    }

    /// Closes the message box that follows, if any, and keeps its title.
    void click(Button button)
    {
        const Operator user;
        QTest::mouseClick(dialog.findChildren<QPushButton *>().at(button), Qt::LeftButton);
        told = user.told.join('|').section('|', 0, 0);
    }

    std::shared_ptr<Gradient> target;
    GradientBuilderDialog dialog;
    QString told;
};

} // namespace

Q_DECLARE_METATYPE(Click)

class TestGradientBuilderDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyConfirmationChangesTheTarget()
    {
        for (const Button button : {cancel, ok}) {
            Opened opened;
            opened.type(name, "after");
            opened.type(maxBound, "80");
            opened.dialog.findChild<GradientBuilderWidget *>()->addStop(0.5F, Qt::red);
            opened.click(button);

            const bool isConfirmed = button == ok;
            QVERIFY(!opened.dialog.isVisible());
            QCOMPARE(opened.target->getName() == "after", isConfirmed);
            QCOMPARE(opened.target->getMin() == 10.0, isConfirmed);
            QCOMPARE(opened.target->getMax() == 80.0, isConfirmed);
            QCOMPARE(opened.target->getMinColor() == belowColor, isConfirmed);
            QCOMPARE(opened.target->getMaxColor() == aboveColor, isConfirmed);
            QCOMPARE(opened.target->isStop(0.5), isConfirmed);
        }
    }

    void boundsThatMakeNoRangeAreRefused()
    {
        Opened opened;
        opened.type(minBound, "90");
        opened.click(ok);
        QCOMPARE(opened.told, QString("Bound Error"));

        opened.type(minBound, "0");
        opened.type(maxBound, "0");
        opened.click(ok);
        QCOMPARE(opened.told, QString("Enter Bounds"));
        QVERIFY(opened.dialog.isVisible());
    }

    void failedSaveIsToldAndKeepsTheTarget()
    {
        Opened opened;
        connect(opened.target.get(), &Gradient::updated, [] { throw std::exception(); });
        opened.type(name, "after");
        opened.click(ok);
        QCOMPARE(opened.told, QString("Gradient not saved"));
        QVERIFY(opened.dialog.isVisible());
        QCOMPARE(opened.target->getName(), GradientFactory::BlackAndWhite().getName());
    }

    void mayBeDeletedUnderItsDialogs_data()
    {
        using Editor = GradientBuilderWidget;
        QTest::addColumn<Click>("click");
        QTest::newRow("bound's colour") << Click([](QDialog &dialog) {
            QTest::mouseDClick(dialog.findChild<GradientColor *>(), Qt::LeftButton);
        });
        QTest::newRow("new stop") << Click([](QDialog &dialog) {
            QTest::mouseDClick(dialog.findChild<Editor *>(), Qt::LeftButton, {}, {100, 20});
        });
        QTest::newRow("stop's colour") << Click([](QDialog &dialog) {
            // Not by way of the window, which Qt goes on using for a context menu.
            auto *editor = dialog.findChild<Editor *>();
            const QPoint at = editor->rect().center();
            QMouseEvent press(
                QEvent::MouseButtonPress, at, at, Qt::RightButton, Qt::RightButton, {});
            QCoreApplication::sendEvent(editor, &press);
        });
        QTest::newRow("message") << Click(
            [](QDialog &dialog) { QTest::keyPress(&dialog, Qt::Key_Return); });
    }

    void mayBeDeletedUnderItsDialogs()
    {
        QFETCH(Click, click);
        const auto gradient = std::make_shared<Gradient>(GradientFactory::BlackAndWhite());
        gradient->addStop(0.5F, Qt::red);
        const QPointer<QDialog> dialog =
            new GradientBuilderDialog(gradient, 90, 10, belowColor, aboveColor, nullptr);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
        QTimer::singleShot(200, dialog, [&dialog] {
            QVERIFY(QApplication::activeModalWidget());
            delete dialog;
        });
        click(*dialog);
        QVERIFY(!dialog);
        QVERIFY(!QApplication::activeModalWidget());
    }

    void boundTakesNoMinusSign()
    {
        Opened opened;
        QCOMPARE(opened.type(minBound, "-3.5"), QString("3.5"));
        QCOMPARE(opened.dialog.getMin(), 3.5);
    }
};

OLVIK_GUI_TEST_MAIN(TestGradientBuilderDialog)
#include "tst_gradientbuilderdialog.moc"
