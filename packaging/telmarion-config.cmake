# find_package(telmarion): telmarion::model, telmarion::uncertainty.
include(CMakeFindDependencyMacro)
find_dependency(hwy)
include("${CMAKE_CURRENT_LIST_DIR}/telmarion-targets.cmake")
