#include "GuiTest.h"

#include "Gradient.h"
#include "GradientBuilderDialog.h"
#include "GradientBuilderWidget.h"
#include "GradientFactory.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <exception>
#include <memory>

namespace {

const QColor belowColor(1, 2, 3);
const QColor aboveColor(4, 5, 6);

/// In the order of the dialog.
enum Field { name, minBound, maxBound };
enum Button { ok, cancel };

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
        // Xvfb runs no window manager: a box that closes at once leaves a warning about the focus.
        QTimer::singleShot(200, &dialog, [this] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                told = box->windowTitle();
                box->accept();
            }
        });
        QTest::mouseClick(dialog.findChildren<QPushButton *>().at(button), Qt::LeftButton);
    }

    std::shared_ptr<Gradient> target;
    GradientBuilderDialog dialog;
    QString told;
};

} // namespace

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

    void boundTakesNoMinusSign()
    {
        Opened opened;
        QCOMPARE(opened.type(minBound, "-3.5"), QString("3.5"));
        QCOMPARE(opened.dialog.getMin(), 3.5);
    }
};

OLVIK_GUI_TEST_MAIN(TestGradientBuilderDialog)
#include "tst_gradientbuilderdialog.moc"
