#include "GradientDialogs.h"

#include <QColorDialog>
#include <QPointer>

void showGradientMessage(
    QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    // Not on the stack, where QMessageBox::critical() has it: a parent deletes its children.
    const QPointer<QMessageBox> box = new QMessageBox(icon, title, text, QMessageBox::Ok, parent);
    box->exec();
    delete box;
}

QColor chosenColor(std::unique_ptr<QColorDialog> dialog, const QWidget &asker)
{
    const QPointer<QColorDialog> opened = dialog.release();
    QObject::connect(&asker, &QObject::destroyed, opened.data(), &QDialog::reject);
    opened->exec();
    QColor chosen = opened ? opened->selectedColor() : QColor();
    delete opened;
    return chosen;
}
