#include "GuiTest.h"
#include "Operator.h"

#include "ColorSelection.h"
#include "GradientTableModel.h"
#include "GradientTableWidget.h"

#include <exception>
#include <limits>

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
        manager.findChild<GradientTableModel *>()->insertGradient(std::make_shared<Gradient>());
        QCOMPARE(second->currentText(), QString("Default"));
        QCOMPARE(manager.getCurrentGradient()->getName(), QString("Default"));

        const QMetaObject::Connection failing = connect(&manager,
            &GradientTableWidget::comboIndexChanged, this, [] { throw std::exception(); });
        QVERIFY_EXCEPTION_THROWN(manager.onComboIndexChanged(1), std::exception);
        disconnect(failing);
        manager.onComboIndexChanged(1);
        QCOMPARE(manager.getCurrentGradient()->getName(), QString("Default Color"));
    }

    void selectorsKeepTheirGradientWhenOneIsMade()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        watchModels(manager);
        const std::unique_ptr<QComboBox> selector(manager.getSelector());
        manager.setGradientByName("Default Color");
        const std::shared_ptr<Gradient> current = manager.getCurrentGradient();

        Operator user([](GradientBuilderDialog &dialog) { confirmAs(dialog, "Рельеф", "80"); });
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
        Operator user;
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
        Operator user;
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
        Operator user([&](GradientBuilderDialog &dialog) {
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
        QStringList names{"Default", "", "Warm"};
        Operator user([&](GradientBuilderDialog &dialog) {
            QCOMPARE(namesInFile(), QStringList({"Default", "Default Color"}));
            confirmAs(dialog, names.takeFirst(), "80");
        });
        manager.onDuplicateClick();
        QCOMPARE(namesInFile(), QStringList({"Default", "Warm"}));
        QCOMPARE(user.told.size(), 2);
        QCOMPARE(user.told.last(), QString("Error|Please enter a name."));
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
        Operator user([&](GradientBuilderDialog &dialog) {
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
            QVERIFY(activate(manager));
            table->setFocus();
            QTest::keyClick(table, Qt::Key(key), modifiers);
        };
        QStringList opened;
        Operator user([&](GradientBuilderDialog &dialog) {
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
        press(Qt::Key_Escape);
        QVERIFY(manager.isHidden());
    }

    void openersBringTheManagerToTheFront()
    {
        if (isOnWayland())
            QSKIP("No program can bring a window to the front on Wayland.");
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        QWidgetAction *action = manager.getOpenAction();
        action->trigger();
        QVERIFY(QTest::qWaitForWindowActive(&manager));
        for (const bool isMinimized : {true, false}) {
            QWidget cover;
            cover.show();
            QVERIFY(activate(cover));
            if (isMinimized)
                manager.showMinimized();
            action->trigger();
            QTRY_VERIFY(manager.isActiveWindow());
            QVERIFY(manager.isVisible() && !manager.isMinimized());
        }
    }

    void namesAreEditedInPlace()
    {
        writeCollection({"Same", "Same"});
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        watchModels(manager);
        manager.onComboIndexChanged(1);
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
        Operator user;
        for (const char *name : {"Hot", "Warm", "Same"})
            rename(name);
        QCOMPARE(namesInFile(), QStringList({"Same", "Warm"}));
        QCOMPARE(manager.getCurrentName(), QString("Warm"));
        QCOMPARE(user.told, QStringList({"Error|Gradient name already exists."}));
    }

    void longNamesStretchNothing()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        auto longest = std::make_shared<Gradient>();
        longest->setName(QString(400, 'W'));
        manager.findChild<GradientTableModel *>()->insertGradient(longest);
        const std::unique_ptr<QComboBox> selector(manager.getSelector());
        const GradientTableWidget later("gradients", 0, 50, nullptr);
        for (const QSize &hint : {selector->minimumSizeHint(), selector->sizeHint(),
                 later.minimumSizeHint(), later.sizeHint()})
            QVERIFY(hint.width() < 400);
    }

    void onlyRowsThatExistAreAnnounced()
    {
        GradientTableWidget manager("gradients", 0, 50, nullptr);
        auto *model = manager.findChild<GradientTableModel *>();
        const QSignalSpy removals(model, &QAbstractItemModel::rowsAboutToBeRemoved);
        const int last = model->rowCount() - 1;
        QVERIFY(model->removeRows(last, std::numeric_limits<int>::max()));
        QCOMPARE(removals.first().at(2).toInt(), last);
        QCOMPARE(model->rowCount(), last);
    }
};

OLVIK_GUI_TEST_MAIN(TestGradientTableWidget)
#include "tst_gradienttablewidget.moc"
