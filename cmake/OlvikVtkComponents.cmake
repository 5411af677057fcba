# The build and the installed package config must ask for the same components: Debian's VTK 9.1 config
# fails in a consumer that names other ones.
set(OLVIK_VTK_COMPONENTS
    CommonColor
    CommonCore
    CommonDataModel
    CommonExecutionModel
    FiltersGeneral
    FiltersSources
    GUISupportQt
    IOImage
    IOPLY
    InteractionStyle
    RenderingAnnotation
    RenderingCore
    RenderingFreeType
    RenderingLOD
    RenderingOpenGL2
)
