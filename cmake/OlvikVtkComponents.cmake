# Named as in VTK 8.2; later versions take these names when asked for 8.2.
#
# The build and the installed package config must ask for the same components: Debian's VTK 9.1 config
# fails in a consumer that names other ones.
set(OLVIK_VTK_COMPONENTS
    vtkCommonColor
    vtkCommonCore
    vtkCommonDataModel
    vtkCommonExecutionModel
    vtkFiltersGeneral
    vtkFiltersSources
    vtkGUISupportQt
    vtkIOImage
    vtkIOPLY
    vtkInteractionStyle
    vtkRenderingAnnotation
    vtkRenderingCore
    vtkRenderingFreeType
    vtkRenderingLOD
    vtkRenderingOpenGL2
)
