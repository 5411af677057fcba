#include "Operations.h"

#include "DialogOperator.h"
#include "Journal.h"
#include "ViewerSlot.h"

#include <QtTest>
#include <QtWidgets>

#include <array>
#include <limits>

namespace {

const char *const factors[] = {"0", "1", "0.1", "2.5", "100", "-1", "1e30", "inf", "nan"};

QPoint somewhereIn(const QWidget &widget, Choice &choice)
{
    return {choice.below(widget.width()), choice.below(widget.height())};
}

Qt::MouseButton randomButton(Choice &choice)
{
    constexpr std::array buttons{Qt::LeftButton, Qt::LeftButton, Qt::MiddleButton, Qt::RightButton};
    return choice.oneOf(buttons);
}

/// \return the view when it can be clicked, otherwise null
Olvik3DViewerWidget *clickableView(const ViewerSlot &slot)
{
    Olvik3DViewerWidget *view = slot.view();
    const bool isThere = view && view->isVisible() && view->width() > 1 && view->height() > 1;
    return isThere ? view : nullptr;
}

/// Rotates, pans or zooms.
void drag(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &)
{
    const QPointer<Olvik3DViewerWidget> view = clickableView(slot);
    if (!view)
        return;
    const Qt::KeyboardModifier modifiers[] = {
        Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
    const Qt::KeyboardModifier modifier = modifiers[choice.oneIn(4) ? choice.below(3) : 0];
    const Qt::MouseButton button = randomButton(choice);
    QTest::mousePress(view, button, modifier, somewhereIn(*view, choice));
    for (int moves = choice.between(1, 8); moves > 0 && view; --moves) {
        QTest::mouseMove(view, somewhereIn(*view, choice));
        journal.beat();
    }
    // The host's calls come between the operator's events.
    if (slot.isAlive() && choice.oneIn(3))
        slot.feed(choice);
    if (view)
        QTest::mouseRelease(view, button, modifier, somewhereIn(*view, choice));
}

void zoomByWheel(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &)
{
    Olvik3DViewerWidget *view = clickableView(slot);
    if (!view)
        return;
    const QPointF at = somewhereIn(*view, choice);
    for (int turns = choice.between(1, 6); turns > 0; --turns) {
        QWheelEvent event(at, view->mapToGlobal(at.toPoint()), QPoint(),
            QPoint(0, choice.oneIn(2) ? 120 : -120), Qt::NoButton, Qt::NoModifier,
            Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view, &event);
        journal.beat();
    }
}

void pick(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    if (Olvik3DViewerWidget *view = clickableView(slot))
        QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, somewhereIn(*view, choice));
}

void measure(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &)
{
    const QPointer<Olvik3DViewerWidget> view = clickableView(slot);
    if (!view)
        return;
    QTest::keyPress(view, Qt::Key_Control, Qt::ControlModifier);
    for (int clicks = choice.between(1, 3); clicks > 0 && view; --clicks) {
        QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, somewhereIn(*view, choice));
        journal.beat();
    }
    if (view && !choice.oneIn(5))
        QTest::keyRelease(view, Qt::Key_Control);
}

/// Two quick presses, of which the window system makes a double-click; a release may get lost.
void pressTwice(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    const QPointer<Olvik3DViewerWidget> view = clickableView(slot);
    if (!view)
        return;
    const Qt::MouseButton button = randomButton(choice);
    const Qt::KeyboardModifier modifier = choice.oneIn(3) ? Qt::ControlModifier : Qt::NoModifier;
    const QPoint at = somewhereIn(*view, choice);
    for (const QEvent::Type press : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
        if (!view)
            return;
        QMouseEvent down(press, at, view->mapToGlobal(at), button, button, modifier);
        QCoreApplication::sendEvent(view, &down);
        if (view && choice.oneIn(2))
            QTest::mouseMove(view, somewhereIn(*view, choice));
        if (view && !choice.oneIn(4))
            QTest::mouseRelease(view, button, modifier, at);
    }
}

void typeKey(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    const Qt::Key keys[] = {Qt::Key_Escape, Qt::Key_Escape, Qt::Key_W, Qt::Key_S, Qt::Key_3,
        Qt::Key_E, Qt::Key_Q, Qt::Key_R, Qt::Key_Control, Qt::Key_Tab};
    if (Olvik3DViewerWidget *view = clickableView(slot))
        QTest::keyClick(view, keys[choice.below(std::size(keys))]);
}

void chooseMenuItem(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &)
{
    if (!slot.window())
        return;
    QList<QAction *> items;
    for (const QMenu *menu : slot.window()->findChildren<QMenu *>()) {
        for (QAction *action : menu->actions()) {
            if (!action->menu() && !action->isSeparator() && action->isEnabled())
                items.append(action);
        }
    }
    QAction *item = choice.oneOf(items);
    journal.note(item->text());
    item->trigger();
}

void changeColorMode(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    slot.view()->setColorMode(choice.oneIn(2) ? Auto : UserGradient);
}

void chooseGradient(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    if (!slot.window())
        return;
    if (auto *selector = slot.window()->findChild<QComboBox *>())
        selector->setCurrentIndex(choice.below(selector->count()));
}

void openGradients(ViewerSlot &slot, Choice &, Journal &, const DialogOperator &)
{
    if (!slot.window())
        return;
    auto *button = slot.window()->centralWidget()->findChild<QPushButton *>();
    if (button && button->isVisible())
        QTest::mouseClick(button, Qt::LeftButton);
    else
        slot.gradients()->show();
}

void editGradient(GradientTableWidget &gradients, Choice &choice)
{
    const QPointer<QTableView> table = gradients.findChild<QTableView *>();
    const QModelIndex cell = table->model()->index(
        choice.below(table->model()->rowCount()), choice.below(table->model()->columnCount()));
    const QPoint point = table->visualRect(cell).center();
    if (!table->viewport()->rect().contains(point))
        return;
    table->setCurrentIndex(cell);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    if (table && choice.oneIn(3))
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, point);
}

void renameGradient(GradientTableWidget &gradients, Choice &choice)
{
    const QPointer<QTableView> table = gradients.findChild<QTableView *>();
    table->setCurrentIndex(table->model()->index(choice.below(table->model()->rowCount()), 0));
    QTest::keyClick(table, Qt::Key_F2);
    const QPointer<QLineEdit> editor = table->viewport()->findChild<QLineEdit *>();
    if (!editor)
        return;
    QTest::keyClicks(editor, choice.oneIn(3) ? "Default" : "renamed");
    QTest::keyClick(editor, choice.oneIn(4) ? Qt::Key_Escape : Qt::Key_Return);
}

void manageGradients(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &)
{
    GradientTableWidget *gradients = slot.gradients();
    if (!gradients)
        return;
    gradients->show();
    switch (choice.below(4)) {
    case 0:
        return editGradient(*gradients, choice);
    case 1:
        return renameGradient(*gradients, choice);
    case 2:
        gradients->close();
        return;
    default:
        QTableView *table = gradients->findChild<QTableView *>();
        table->selectRow(choice.below(table->model()->rowCount()));
        QAction *action = choice.oneOf(gradients->findChild<QToolBar *>()->actions());
        journal.note(action->text());
        action->trigger();
    }
}

void scaleAxes(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    const auto factor = [&] {
        return QByteArray(factors[choice.below(std::size(factors))]).toFloat();
    };
    const float x = factor();
    const float y = factor();
    slot.view()->setAxesScale(x, y, factor());
}

void scaleSensor(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    const int values[] = {0, 1, 2, 100, 100000, -1, std::numeric_limits<int>::max()};
    slot.viewer()->setScale(values[choice.below(std::size(values))]);
    slot.viewer()->setSensorHeight(values[choice.below(std::size(values))]);
}

void loadFile(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &files)
{
    if (choice.oneIn(3))
        return slot.view()->load();
    const QString path = files.randomPath(choice);
    journal.note(path.section('/', -1));
    slot.view()->load(path, choice.oneIn(3));
}

void resize(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    slot.topLevel()->resize(choice.between(1, 1200), choice.between(1, 900));
}

void move(ViewerSlot &slot, Choice &, Journal &, const DialogOperator &)
{
    slot.move();
}

void feedBurst(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &)
{
    for (int buffers = choice.between(1, 5); buffers > 0; --buffers) {
        slot.feed(choice);
        if (choice.oneIn(2))
            QCoreApplication::processEvents();
        journal.beat();
        if (!slot.isAlive())
            return;
    }
}

void closeWindow(ViewerSlot &slot, Choice &choice, Journal &, const DialogOperator &)
{
    const bool deletesAtOnce = choice.oneIn(3);
    slot.close(!deletesAtOnce && choice.oneIn(2));
    if (deletesAtOnce)
        slot.remove(false);
}

void act(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &)
{
    hostActs(slot, choice, journal);
}

constexpr std::array operations{Operation{"feed", 30, feedBurst}, Operation{"drag", 11, drag},
    Operation{"zoom by wheel", 3, zoomByWheel}, Operation{"pick", 5, pick},
    Operation{"measure", 4, measure}, Operation{"press twice", 4, pressTwice},
    Operation{"key", 3, typeKey}, Operation{"menu item", 14, chooseMenuItem},
    Operation{"colour mode", 3, changeColorMode}, Operation{"choose gradient", 4, chooseGradient},
    Operation{"open gradients", 2, openGradients},
    Operation{"manage gradients", 8, manageGradients}, Operation{"axes scale", 3, scaleAxes},
    Operation{"sensor scale", 2, scaleSensor}, Operation{"load", 4, loadFile},
    Operation{"resize", 3, resize}, Operation{"move", 1, move}, Operation{"host", 5, act},
    Operation{"close", 2, closeWindow}};

} // namespace

const Operation &randomOperation(Choice &choice)
{
    int weights = 0;
    for (const Operation &operation : operations)
        weights += operation.weight;
    int left = choice.below(weights);
    const Operation *chosen = operations.begin();
    while (left >= chosen->weight)
        left -= (chosen++)->weight;
    return *chosen;
}

void hostActs(ViewerSlot &slot, Choice &choice, Journal &journal)
{
    switch (choice.below(5)) {
    case 0:
        journal.note(QStringLiteral("show"));
        return slot.viewer()->show();
    case 1:
        journal.note(QStringLiteral("hide"));
        return slot.viewer()->hide();
    case 2:
        return slot.viewer()->setWindowName(QString::number(choice.below(100)));
    case 3:
        return slot.feed(choice);
    default:
        journal.note(QStringLiteral("delete"));
        return slot.remove(choice.oneIn(3));
    }
}
