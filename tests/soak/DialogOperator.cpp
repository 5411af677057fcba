#include "DialogOperator.h"

#include "GradientBuilderWidget.h"
#include "Journal.h"

#include <QtTest>
#include <QtWidgets>

namespace {

constexpr int tickMs = 15;
constexpr int mostTicks = 12;
const char *const ticksKey = "soak ticks";

const char *const texts[] = {
    "", "0", "1", "2.5", "0,5", "-3", "1e9", "1000", "nan", "warm", "Default", "a b/c"};

} // namespace

DialogOperator::DialogOperator(Journal &journalOfRun, QString folderForFiles)
    : journal(journalOfRun)
    , folder(std::move(folderForFiles))
{
    tick();
}

bool DialogOperator::isBusy() const
{
    return QApplication::activeModalWidget() || QApplication::activePopupWidget();
}

QString DialogOperator::randomPath(Choice &choice) const
{
    switch (choice.below(8)) {
    case 0:
        return QStringLiteral("/dev/full");
    case 1:
        return folder + QStringLiteral("/missing/cloud.ply");
    case 2:
        return folder + QStringLiteral("/garbage-%1.ply").arg(choice.below(4));
    case 3:
        return QString();
    default:
        return folder + QStringLiteral("/cloud-%1.ply").arg(choice.below(4));
    }
}

void DialogOperator::tick()
{
    // One shot each: a repeating timer is deaf in the event loops that its own answer opens.
    QTimer::singleShot(tickMs, this, &DialogOperator::tick);
    journal.beat();
    if (QWidget *popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog)
        return;
    // At the dialog itself: another one may get its address.
    const int ticks = dialog->property(ticksKey).toInt();
    dialog->setProperty(ticksKey, ticks + 1);
    if (ticks == 0) {
        journal.note(dialog->metaObject()->className() + (": " + dialog->windowTitle()));
        if (host && random.oneIn(4)) {
            host(random);
            return;
        }
    }
    answer(*dialog);
}

void DialogOperator::answer(QWidget &dialog)
{
    if (auto *files = qobject_cast<QFileDialog *>(&dialog))
        return answerFileDialog(*files);
    if (auto *box = qobject_cast<QMessageBox *>(&dialog))
        return answerMessageBox(*box);
    if (auto *colors = qobject_cast<QColorDialog *>(&dialog)) {
        colors->setCurrentColor(QColor::fromRgba(static_cast<QRgb>(random.bits())));
        return random.oneIn(3) ? colors->reject() : colors->accept();
    }
    if (dialog.property(ticksKey).toInt() > mostTicks) {
        dialog.close();
        return;
    }
    if (random.oneIn(3))
        finish(dialog);
    else
        fillIn(dialog);
}

void DialogOperator::answerFileDialog(QFileDialog &dialog)
{
    const QString path = randomPath(random);
    if (path.isEmpty() || dialog.property(ticksKey).toInt() > 3)
        return dialog.reject();
    journal.note(path.section('/', -1));
    dialog.findChild<QLineEdit *>()->setText(path);
    QMetaObject::invokeMethod(&dialog, "accept");
}

void DialogOperator::answerMessageBox(QMessageBox &box)
{
    const QList<QAbstractButton *> buttons = box.buttons();
    if (buttons.isEmpty() || random.oneIn(5))
        box.reject();
    else
        random.oneOf(buttons)->click();
}

void DialogOperator::fillIn(QWidget &dialog)
{
    auto *gradient = dialog.findChild<GradientBuilderWidget *>();
    if (gradient && random.oneIn(2)) {
        drawOnGradient(*gradient);
        return;
    }
    const QList<QLineEdit *> edits = dialog.findChildren<QLineEdit *>();
    if (edits.isEmpty())
        return finish(dialog);
    QLineEdit *edit = random.oneOf(edits);
    edit->clear();
    QTest::keyClicks(edit, texts[random.below(std::size(texts))]);
}

/// Adds, moves, recolours or removes a stop.
void DialogOperator::drawOnGradient(QWidget &editor)
{
    const QPoint middle(random.below(qMax(1, editor.width())), editor.height() / 2);
    const QPointer<QWidget> guard(&editor);
    switch (random.below(3)) {
    case 0:
        QTest::mouseDClick(&editor, Qt::LeftButton, Qt::NoModifier, middle);
        break;
    case 1:
        QTest::mouseClick(&editor, Qt::RightButton, Qt::NoModifier, middle);
        break;
    default:
        QTest::mousePress(&editor, Qt::LeftButton, Qt::NoModifier, middle);
        if (guard)
            QTest::mouseMove(&editor, {random.below(qMax(1, editor.width())), middle.y()});
        if (guard)
            QTest::mouseRelease(&editor, Qt::LeftButton, Qt::NoModifier, middle);
    }
}

void DialogOperator::finish(QWidget &dialog)
{
    const QList<QPushButton *> buttons = dialog.findChildren<QPushButton *>();
    if (buttons.isEmpty() || random.oneIn(6))
        dialog.close();
    else
        QTest::mouseClick(random.oneOf(buttons), Qt::LeftButton);
}
