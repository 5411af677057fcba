#include "PlainWriter.h"

#include <QFile>

#include <vtkNew.h>
#include <vtkPLYWriter.h>
#include <vtkPolyData.h>

bool writePlain(vtkPolyData &cloud, const QString &path)
{
    vtkNew<vtkPLYWriter> writer;
    writer->SetFileTypeToASCII();
    writer->SetFileName(QFile::encodeName(path).constData());
    writer->SetInputData(&cloud);
    return writer->Write() != 0;
}
