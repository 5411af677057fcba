#pragma once

#include <QObject>
#include <QPointer>

#include <memory>
#include <utility>

/// Counts the frames of one owner that are on the stack: event handlers, emissions, dialogs. In each
/// of them a host may run an event loop and delete the owner there, behind the backs of the frames
/// that return to it.
///
/// Copies count together. GUI thread only.
class StackFrames
{
    struct State
    {
        int count = 0;
        QPointer<QObject> leaving;
    };

public:
    /// A frame of the owner, which may be gone by the end of the scope.
    class Hold
    {
    public:
        explicit Hold(const StackFrames &frames)
            : state(frames.state)
        {
            ++state->count;
        }
        ~Hold()
        {
            if (--state->count == 0 && state->leaving)
                state->leaving->deleteLater();
        }
        Q_DISABLE_COPY_MOVE(Hold)

    private:
        std::shared_ptr<State> state;
    };

    /// Calls the object's deleteLater() as soon as no frame is left, which may be now.
    void deleteAfterLast(QObject *object) const
    {
        state->leaving = object;
        const Hold atLeastOne(*this);
    }

private:
    std::shared_ptr<State> state = std::make_shared<State>();
};

/// A widget whose event handlers are among the frames.
template <class Widget> class CountedWidget : public Widget
{
public:
    template <class... Arguments>
    explicit CountedWidget(const StackFrames &counting, Arguments &&...arguments)
        : Widget(std::forward<Arguments>(arguments)...)
        , frames(counting)
    { }

protected:
    bool event(QEvent *event) override
    {
        const StackFrames::Hold hold(frames);
        return Widget::event(event);
    }

private:
    StackFrames frames;
};
