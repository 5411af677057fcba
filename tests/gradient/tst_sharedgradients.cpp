// Managers in several windows and programs that share the gradients' file.
#include "GuiTest.h"
#include "Operator.h"

#include "GradientCollection.h"
#include "GradientTableWidget.h"

namespace {

QString filePath(const QString &name = "gradients.json")
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + '/' + name;
}

void confirm(const GradientBuilderDialog &dialog)
{
    dialog.findChild<QPushButton *>()->click();
}

} // namespace

class TestSharedGradients : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QDir(filePath("")).removeRecursively();
        manager = std::make_unique<GradientTableWidget>("gradients", 0, 50, nullptr);
        table = manager->findChild<QTableView *>();
        selector.reset(manager->getSelector());
        other = std::make_unique<GradientCollection>(filePath());
        other->load();
    }

    void changesElsewhereAreShown()
    {
        for (QAbstractItemModel *model : {table->model(), selector->model()})
            new QAbstractItemModelTester(
                model, QAbstractItemModelTester::FailureReportingMode::Fatal, model);
        manager->setGradientByName("Default Color");
        table->selectRow(1);
        const std::shared_ptr<Gradient> current = manager->getCurrentGradient();
        QSignalSpy changes(manager.get(), &GradientTableWidget::currentGradientChanged);
        other->getGradientAt(1)->setMax(80);
        QTRY_COMPARE(current->getMax(), 80.0);
        QCOMPARE(manager->getCurrentGradient(), current);
        QCOMPARE(changes.size(), 1);

        other->remove(0);
        other->add(other->newGradientShared());
        QTRY_COMPARE(selector->itemText(1), QString("New gradient 0"));
        QCOMPARE(selector->currentText(), QString("Default Color"));
        QCOMPARE(manager->getCurrentGradient(), current);
        QCOMPARE(table->selectionModel()->selectedRows().value(0).data().toString(),
            QString("Default Color"));

        other->rename("Default Color", "Warm");
        QTRY_COMPARE(current->getName(), QString("Warm"));
        QCOMPARE(manager->getCurrentGradient(), current);
        QCOMPARE(selector->currentText(), QString("Warm"));
        changes.clear();
        other->getGradientAt(0)->setMax(90);
        QTRY_COMPARE(changes.size(), 1);
    }

    void anOpenDialogKeepsItsGradient()
    {
        table->selectRow(1);
        const Operator user([this](GradientBuilderDialog &dialog) {
            other->remove(1);
            const bool isKept = staysAsItIs();
            dialog.setGradientName("Mine");
            confirm(dialog);
            QVERIFY(isKept);
        });
        manager->onDuplicateClick();
        other->refresh();
        QVERIFY(other->checkNameExists("Mine"));
    }

    void aNameThatIsTypedStaysOpen()
    {
        manager->show();
        QVERIFY(QTest::qWaitForWindowExposed(manager.get()));
        table->setCurrentIndex(table->model()->index(1, 0));
        QTest::keyClick(table, Qt::Key_F2);
        auto *editor = table->findChild<QLineEdit *>();
        editor->setText("Mine");
        other->remove(0);
        QVERIFY(staysAsItIs() && editor->isVisible());
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(selector->count(), 1);
        QCOMPARE(selector->currentText(), QString("Mine"));
    }

    void namesOfOthersAreToldToBeTaken()
    {
        const Operator user([&](GradientBuilderDialog &dialog) {
            if (!user.told.isEmpty())
                return dialog.reject();
            other->add(other->newGradientShared());
            confirm(dialog);
        });
        manager->onNewClick();
        QVERIFY(user.told.value(0).startsWith("Error|Another gradient has this name already."));
        QTRY_COMPARE(selector->count(), 3);
    }

    void anUnreadableFileIsTakenUpLater()
    {
        const QString aside = filePath("aside");
        QVERIFY(QFile::rename(filePath(), aside) && QDir().mkpath(filePath()));
        QTest::ignoreMessage(QtWarningMsg, "Couldn't open save file.");
        GradientTableWidget late("gradients", 0, 900, nullptr);
        QCOMPARE(late.getCurrentGradient()->getMax(), 900.0);
        QCOMPARE(late.findChild<QComboBox *>()->count(), 2);
        QVERIFY(QDir().rmdir(filePath()) && QFile::rename(aside, filePath()));
        QTRY_COMPARE(late.getCurrentGradient()->getMax(), 50.0);
        QCOMPARE(late.findChild<QComboBox *>()->count(), 2);
    }

private:
    /// For longer than a change takes to be shown.
    bool staysAsItIs() const
    {
        return !QSignalSpy(table->model(), &QAbstractItemModel::modelReset).wait(400);
    }

    std::unique_ptr<GradientTableWidget> manager;
    std::unique_ptr<QComboBox> selector;
    std::unique_ptr<GradientCollection> other;
    QTableView *table = nullptr;
};

OLVIK_GUI_TEST_MAIN(TestSharedGradients)
#include "tst_sharedgradients.moc"
