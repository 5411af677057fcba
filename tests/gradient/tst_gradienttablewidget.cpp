#include "GuiTest.h"

#include "ColorSelection.h"
#include "GradientBuilderDialog.h"
#include "GradientTableWidget.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTableView>
#include <QTimer>

#include <functional>

namespace {

/// Every change has to pass Qt's own rules for models.
void watchModels(const GradientTableWidget &manager)
{
    for (QAbstractItemModel *model :
        {manager.findChild<QTableView *>()->model(), manager.findChild<QComboBox *>()->model()})
        new QAbstractItemModelTester(
            model, QAbstractItemModelTester::FailureReportingMode::Fatal, model);
}

QString filePath(const QString &name = "gradients.json")
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + '/' + name;
}

QStringList namesInFile()
{
    QFile file(filePath());
    QStringList names;
    if (!file.open(QIODevice::ReadOnly))
        return names;
    const QJsonArray records =
        QJsonDocument::fromJson(file.readAll()).object()["gradients"].toArray();
    for (const QJsonValue &record : records)
        names += record.toObject()["name"].toString();
    return names;
}

/// Answers each modal dialog that opens, like a user who takes a moment.
class User : public QObject
{
public:
    explicit User(std::function<void(GradientBuilderDialog &)> edits)
        : edit(std::move(edits))
    {
        connect(&timer, &QTimer::timeout, this, &User::answer);
        timer.start(250);
    }
    QStringList told;

private:
    void answer()
    {
        QWidget *dialog = QApplication::activeModalWidget();
        if (auto *builder = qobject_cast<GradientBuilderDialog *>(dialog)) {
            edit(*builder);
        } else if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
            told += box->windowTitle() + '|' + box->text();
            box->button(QMessageBox::Ok)->click();
        }
    }

    std::function<void(GradientBuilderDialog &)> edit;
    QTimer timer;
};

void press(const GradientBuilderDialog &dialog, const QString &text)
{
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        if (button->text() == text)
            QTest::mouseClick(button, Qt::LeftButton);
    }
}

/// Types a name and an upper bound and confirms.
void confirmAs(GradientBuilderDialog &dialog, const QString &name, const QString &max)
{
    dialog.setGradientName(name);
    auto *maxField = dialog.findChildren<ColorSelection *>().last()->findChild<QLineEdit *>();
    maxField->selectAll();
    QTest::keyClicks(maxField, max);
    press(dialog, "&Ok");
}

} // namespace

class TestGradientTableWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QDir(filePath("")).removeRecursively(); }

    void anEmptyFolderGivesTheBuiltIns()
    {
        GradientTableWidget manager("gradients", 5, 700, nullptr);
        QCOMPARE(namesInFile(), QStringList({"Default", "Default Color"}));
        QCOMPARE(manager.getCurrentName(), QString("Default"));
        manager.setGradientByName("Default Color");
        const std::shared_ptr<Gradient> gradient = manager.getCurrentGradient();
        QCOMPARE(gradient->getMin(), 5.0);
        QCOMPARE(gradient->getMax(), 700.0);
        QCOMPARE(gradient->stops().size(), 4);
        QCOMPARE(gradient->stops()[1].second, QColor(0, 255, 255));

        for (const char *name : {"", "default color"}) {
            manager.setGradientByName(name);
            QCOMPARE(manager.getCurrentGradient()->getName(), QString("Default"));
        }
        const GradientTableWidget upperCase("mine.JSON", 0, 1, nullptr);
        QVERIFY(QFile::exists(filePath("mine.JSON.json")));
    }

    void selectorsFollowEachOther()
    {
        GradientTableWidget manager("gradients", 0, 1, nullptr);
        const std::unique_ptr<QComboBox> first(manager.getSelector());
        const std::unique_ptr<QComboBox> second(manager.getSelector());
        const QSignalSpy changes(&manager, &GradientTableWidget::currentGradientChanged);
        first->setCurrentIndex(1);
        QCOMPARE(second->currentText(), QString("Default Color"));
        QCOMPARE(manager.getCurrentGradient()->getName(), QString("Default Color"));
        QCOMPARE(changes.size(), 1);

        manager.onComboIndexChanged(2);
        QCOMPARE(first->currentIndex(), 1);
        manager.onComboIndexChanged(-1);
        QCOMPARE(second->currentIndex(), -1);
        QCOMPARE(manager.getCurrentGradient()->getName(), QString("Default Color"));
        QCOMPARE(changes.size(), 1);
    }

    void selectorsKeepTheirGradientWhenOneIsMade()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        watchModels(manager);
        const std::unique_ptr<QComboBox> selector(manager.getSelector());
        manager.setGradientByName("Default Color");
        const std::shared_ptr<Gradient> current = manager.getCurrentGradient();

        User user([](GradientBuilderDialog &dialog) { confirmAs(dialog, "Рельеф", "80"); });
        manager.onNewClick();

        QCOMPARE(user.told, QStringList());
        QCOMPARE(namesInFile(), QStringList({"Default", "Default Color", "Рельеф"}));
        QCOMPARE(selector->itemText(2), QString("Рельеф"));
        QCOMPARE(selector->currentText(), QString("Default Color"));
        QCOMPARE(manager.getCurrentName(), QString("Default Color"));
        QCOMPARE(manager.getCurrentGradient(), current);
        manager.setGradientByName("Рельеф");
        QCOMPARE(manager.getCurrentGradient()->getMax(), 80.0);
    }

    void builtInsAreNotDeleted()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        manager.findChild<QTableView *>()->selectRow(1);
        User user([](GradientBuilderDialog &) {});
        QTest::ignoreMessage(QtDebugMsg, "\"Default Color\"");
        manager.onDeleteClick();
        QCOMPARE(user.told, QStringList({"Cannot delete|The Default gradient cannot be deleted"}));
        QCOMPARE(namesInFile().size(), 2);
    }

    void deletedGradientsLeaveTheFile()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        watchModels(manager);
        User user([](GradientBuilderDialog &dialog) { confirmAs(dialog, "Mine", "80"); });
        manager.onNewClick();
        manager.setGradientByName("Mine");
        manager.findChild<QTableView *>()->selectRow(2);
        QTest::ignoreMessage(QtDebugMsg, "\"Mine\"");
        manager.onDeleteClick();
        QCOMPARE(namesInFile(), QStringList({"Default", "Default Color"}));
        // On screen until another one is chosen.
        QCOMPARE(manager.getCurrentGradient()->getName(), QString("Mine"));
        manager.show();
        QVERIFY(QTest::qWaitForWindowExposed(&manager));
        manager.onNewClick();
        QCOMPARE(manager.getCurrentName(), QString("Mine"));
    }

    void namesAreEditedInPlace()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        watchModels(manager);
        manager.setGradientByName("Default Color");
        manager.show();
        QVERIFY(QTest::qWaitForWindowExposed(&manager));
        auto *table = manager.findChild<QTableView *>();
        const auto rename = [&](const QString &name) {
            table->setCurrentIndex(table->model()->index(1, 0));
            QTest::keyClick(table, Qt::Key_F2);
            auto *editor = table->findChild<QLineEdit *>();
            editor->selectAll();
            QTest::keyClicks(editor, name);
            QTest::keyClick(editor, Qt::Key_Return);
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };

        rename("Warm");
        QCOMPARE(namesInFile(), QStringList({"Default", "Warm"}));
        QCOMPARE(manager.getCurrentName(), QString("Warm"));

        User user([](GradientBuilderDialog &) {});
        rename("Default");
        QCOMPARE(user.told, QStringList({"Error|Gradient name already exists."}));
        QCOMPARE(namesInFile(), QStringList({"Default", "Warm"}));
    }

    void withoutAFileTheBuiltInsStillWork()
    {
        const QByteArray home = qgetenv("XDG_DATA_HOME");
        const auto restore = qScopeGuard([&] { qputenv("XDG_DATA_HOME", home); });
        qputenv("XDG_DATA_HOME", "/proc/nowhere");
        QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        QCOMPARE(manager.getCurrentName(), QString("Default"));
        manager.setGradientByName("Default Color");
        QCOMPARE(manager.getCurrentGradient()->getMax(), 50.0);

        User user([](GradientBuilderDialog &dialog) { confirmAs(dialog, "Mine", "80"); });
        QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");
        manager.onNewClick();
        QCOMPARE(user.told, QStringList({"Error|The gradients could not be saved."}));
    }
};

OLVIK_GUI_TEST_MAIN(TestGradientTableWidget)
#include "tst_gradienttablewidget.moc"
