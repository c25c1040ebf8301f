# What the library's public headers need stands in RunsieveConfig.cmake.in as well: keep the two in step.
set(RUNSIEVE_VTK_COMPONENTS
  CommonCore CommonDataModel CommonExecutionModel CommonColor FiltersCore FiltersGeneral FiltersExtraction
  FiltersStatistics RenderingCore RenderingContext2D ViewsContext2D ChartsCore GUISupportQt IOCore IOInfovis
  IOExportGL2PS
  # Factories that a working chart needs; the library registers them, so a host links one target only.
  RenderingOpenGL2 RenderingContextOpenGL2 RenderingFreeType RenderingVolumeOpenGL2 RenderingGL2PSOpenGL2
  InteractionStyle)

find_package(VTK 9.1 REQUIRED COMPONENTS ${RUNSIEVE_VTK_COMPONENTS} OPTIONAL_COMPONENTS IOImage)
find_package(Qt${VTK_QT_VERSION} REQUIRED COMPONENTS Core Gui Widgets)
find_package(Boost 1.74 REQUIRED)
find_package(Eigen3 3.4 REQUIRED NO_MODULE)
find_package(ZLIB REQUIRED)
find_package(HDF5 1.10 REQUIRED COMPONENTS C)
