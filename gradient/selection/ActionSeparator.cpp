#include "ActionSeparator.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>

ActionSeparator::ActionSeparator(QString text, QWidget *parent)
    : QWidgetAction(parent)
    , frame(new QFrame)
{
    frame->setObjectName(QStringLiteral("FrameMenu"));
    frame->setStyleSheet(
        QStringLiteral("QFrame#FrameMenu{padding:0;Padding-left:0.5em; padding-top:0.5ex}"));
    auto *layout = new QHBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);

    auto *caption = new QLabel(text);
    caption->setStyleSheet(QStringLiteral("padding:0;"));
    layout->addWidget(caption, 0, Qt::AlignVCenter);

    auto *rule = new QFrame(frame);
    rule->setStyleSheet(QStringLiteral("padding:0;"));
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    layout->addWidget(rule, 1, Qt::AlignVCenter);
    setDefaultWidget(frame);
}

ActionSeparator::~ActionSeparator()
{
    delete frame;
}
