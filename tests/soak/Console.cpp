#include "Console.h"

#include "Journal.h"

#include <QtGlobal>

#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>

namespace {

Journal *listener = nullptr;

void onQtMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // Without a window manager nobody keeps the focus from a window that is just being hidden.
    const bool isExpected = message == QLatin1String("3D viewer: null buffers are ignored")
        || (message.contains(QLatin1String("XCB error: 8"))
            && message.contains(QLatin1String("(SetInputFocus)")));
    if (type != QtDebugMsg && !isExpected)
        listener->fail("Qt says: " + message);
}

class FailingOutput : public vtkOutputWindow
{
public:
    static FailingOutput *New();
    vtkTypeMacro(FailingOutput, vtkOutputWindow)

    void DisplayText(const char *text) override
    {
        listener->fail("VTK says: " + QString::fromUtf8(text).simplified());
    }
};

vtkStandardNewMacro(FailingOutput)

} // namespace

void failOnMessages(Journal &journal)
{
    listener = &journal;
    qInstallMessageHandler(onQtMessage);
    const vtkNew<FailingOutput> output;
    vtkOutputWindow::SetInstance(output);
}
