#include "GuiTest.h"

#include "ColorSelection.h"
#include "GradientBuilderDialog.h"
#include "GradientTableModel.h"
#include "GradientTableWidget.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTableView>
#include <QTimer>
#include <QWidgetAction>

#include <exception>
#include <functional>
#include <utility>

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

void writeCollection(const QStringList &names)
{
    QJsonArray records;
    for (const QString &name : names)
        records.append(QJsonObject{{"name", name}});
    QDir().mkpath(filePath(""));
    QFile file(filePath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(QJsonObject{{"gradients", records}}).toJson());
}

/// Answers each modal dialog that opens, like a user who takes a moment.
class User : public QObject
{
public:
    explicit User(std::function<void(GradientBuilderDialog &)> edits)
        : edit(std::move(edits))
    {
        connect(&timer, &QTimer::timeout, this, &User::answer);
        timer.start(200);
    }
    QStringList told;

private:
    void answer()
    {
        QWidget *dialog = QApplication::activeModalWidget();
        if (dialog != std::exchange(seen, dialog))
            return;
        if (auto *builder = qobject_cast<GradientBuilderDialog *>(dialog)) {
            edit(*builder);
        } else if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
            told += box->windowTitle() + '|' + box->text();
            box->button(QMessageBox::Ok)->click();
        }
    }

    std::function<void(GradientBuilderDialog &)> edit;
    QPointer<QWidget> seen;
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

        const QMetaObject::Connection failing = connect(&manager,
            &GradientTableWidget::comboIndexChanged, this, [] { throw std::exception(); });
        QVERIFY_EXCEPTION_THROWN(manager.onComboIndexChanged(0), std::exception);
        disconnect(failing);
        manager.onComboIndexChanged(0);
        QCOMPARE(manager.getCurrentGradient()->getName(), QString("Default"));
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

    void selectorsFollowADeletion_data()
    {
        QTest::addColumn<QString>("current");
        QTest::addColumn<int>("deleted");
        QTest::addColumn<bool>("isSaved");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a row above") << "B" << 0 << true << "B";
        QTest::newRow("a row above, not saved") << "C" << 1 << false << "C";
        QTest::newRow("a row below") << "B" << 2 << true << "B";
        QTest::newRow("the current row") << "B" << 1 << true << "A";
        QTest::newRow("the first row") << "A" << 0 << true << "B";
    }

    void selectorsFollowADeletion()
    {
        QFETCH(QString, current);
        QFETCH(int, deleted);
        QFETCH(bool, isSaved);
        writeCollection({"A", "B", "C"});
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        watchModels(manager);
        const std::unique_ptr<QComboBox> selector(manager.getSelector());
        manager.setGradientByName(current);
        manager.findChild<QTableView *>()->selectRow(deleted);
        User user([](GradientBuilderDialog &) {});
        if (!isSaved) {
            QDir(filePath("")).removeRecursively();
            QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");
        }
        QTest::ignoreMessage(QtDebugMsg, qPrintable(QString("\"%1\"").arg(QChar('A' + deleted))));
        manager.onDeleteClick();
        QTEST(selector->currentText(), "expected");
        QTEST(manager.getCurrentName(), "expected");
        QTEST(manager.getCurrentGradient()->getName(), "expected");
        QCOMPARE(namesInFile().size(), isSaved ? 2 : 0);
        QCOMPARE(user.told.size(), isSaved ? 0 : 1);

        QDir().mkpath(filePath(""));
        manager.findChild<GradientTableModel *>()->insertGradient(std::make_shared<Gradient>());
        QTEST(manager.getCurrentGradient()->getName(), "expected");
        QTEST(selector->currentText(), "expected");
    }

    void whatCannotBeAddedIsEditedAgain_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isFolderThere");
        QTest::addColumn<QString>("told");
        QTest::newRow("not saved") << "Mine" << false << "Error|The gradients could not be saved.";
        QTest::newRow("name is taken") << "Default" << true
                                       << "Error|Another gradient has this name already. Please "
                                          "choose another name.";
    }

    void whatCannotBeAddedIsEditedAgain()
    {
        QFETCH(QString, name);
        QFETCH(bool, isFolderThere);
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        auto *table = manager.findChild<QTableView *>();
        table->selectRow(1);
        QStringList opened;
        User user([&](GradientBuilderDialog &dialog) {
            const QGradientStops stops = dialog.getCurrentGradient()->stops();
            opened += QString("%1 %2 %3")
                          .arg(dialog.getGradientName())
                          .arg(dialog.getMax())
                          .arg(stops.size());
            dialog.getCurrentGradient()->addStop(0.25F, Qt::red);
            QDir().mkpath(opened.size() > 1 ? filePath("") : "/");
            confirmAs(dialog, opened.size() > 1 ? "Mine" : name, "80");
        });
        if (!isFolderThere) {
            QDir(filePath("")).removeRecursively();
            QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");
        }
        manager.onNewClick();
        QCOMPARE(opened, QStringList({"New gradient 0 50 2", name + " 80 3"}));
        QTEST(user.told.join('\n'), "told");
        QCOMPARE(namesInFile(), QStringList({"Default", "Default Color", "Mine"}));
        QCOMPARE(table->verticalHeader()->count(), 3);
        QCOMPARE(table->selectionModel()->selectedRows().value(0).row(), 1);
    }

    void duplicateLeavesNoEmptyRow()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        auto *table = manager.findChild<QTableView *>();
        table->selectRow(1);
        User user([](GradientBuilderDialog &dialog) { confirmAs(dialog, "Warm", "80"); });
        manager.onDuplicateClick();
        QCOMPARE(namesInFile(), QStringList({"Default", "Warm"}));
        QCOMPARE(user.told, QStringList());
        QCOMPARE(table->verticalHeader()->count(), 2);
        QCOMPARE(table->selectionModel()->selectedRows().value(0).row(), 1);
    }

    void managerMayBeDeletedUnderADialog_data()
    {
        QTest::addColumn<QByteArray>("slot");
        for (const char *slot : {"onNewClick", "onDuplicateClick", "onDeleteClick"})
            QTest::newRow(slot) << QByteArray(slot);
    }

    void managerMayBeDeletedUnderADialog()
    {
        QFETCH(QByteArray, slot);
        auto *manager = new GradientTableWidget("gradients", 0, 50, nullptr);
        const QPointer<GradientTableWidget> alive(manager);
        manager->findChild<QTableView *>()->selectRow(1);
        QTimer::singleShot(100, manager, &QObject::deleteLater);
        User user([&](GradientBuilderDialog &dialog) {
            QVERIFY(!alive);
            confirmAs(dialog, "Default Color", "80");
        });
        if (slot == "onDeleteClick")
            QTest::ignoreMessage(QtDebugMsg, "\"Default Color\"");
        QVERIFY(QMetaObject::invokeMethod(manager, slot));
        QVERIFY(!alive);
        QCOMPARE(namesInFile(), QStringList({"Default", "Default Color"}));
        QCOMPARE(user.told, QStringList());
    }

    void keysDoWhatTheMouseDoes()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        auto *table = manager.findChild<QTableView *>();
        table->setCurrentIndex(table->model()->index(1, 0));
        const auto press = [&](int key, Qt::KeyboardModifiers modifiers = {}) {
            manager.show();
            manager.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&manager));
            table->setFocus();
            QTest::keyClick(table, Qt::Key(key), modifiers);
        };
        QStringList opened;
        User user([&](GradientBuilderDialog &dialog) {
            opened += dialog.getGradientName();
            ::press(dialog, "&Cancel");
        });
        const QSignalSpy changes(&manager, &GradientTableWidget::currentGradientChanged);
        press(Qt::Key_Return);
        press(Qt::Key_Enter, Qt::KeypadModifier);
        press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(opened, QStringList({"Default Color", "Default Color", "New gradient 0"}));
        QCOMPARE(changes.size(), 0);

        press(Qt::Key_F2);
        auto *editor = table->findChild<QLineEdit *>();
        QTest::keyClicks(editor, "XWarm");
        QTest::keyClick(editor, Qt::Key_Home);
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(namesInFile(), QStringList({"Default", "Warm"}));
        QCOMPARE(opened.size(), 3);
        QTRY_VERIFY(table->hasFocus());

        QTest::ignoreMessage(QtDebugMsg, "\"Warm\"");
        press(Qt::Key_Delete);
        QCOMPARE(namesInFile(), QStringList("Default"));
        press(Qt::Key_Tab);
        QVERIFY(!table->hasFocus());
    }

    void openersBringTheManagerToTheFront_data()
    {
        QTest::addColumn<bool>("isMinimized");
        QTest::newRow("minimised") << true;
        QTest::newRow("covered") << false;
    }

    void openersBringTheManagerToTheFront()
    {
        QFETCH(bool, isMinimized);
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        QWidgetAction *action = manager.getOpenAction();
        action->trigger();
        QVERIFY(QTest::qWaitForWindowActive(&manager));
        QWidget cover;
        cover.show();
        cover.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&cover));
        if (isMinimized)
            manager.showMinimized();
        action->trigger();
        QTRY_VERIFY(manager.isActiveWindow());
        QVERIFY(manager.isVisible() && !manager.isMinimized());
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

        bool isAgain = false;
        User user([&](GradientBuilderDialog &dialog) {
            isAgain ? press(dialog, "&Cancel") : confirmAs(dialog, "Mine", "80");
            isAgain = true;
        });
        QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");
        manager.onNewClick();
        QCOMPARE(user.told, QStringList({"Error|The gradients could not be saved."}));
    }
};

OLVIK_GUI_TEST_MAIN(TestGradientTableWidget)
#include "tst_gradienttablewidget.moc"
