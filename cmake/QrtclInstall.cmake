# Installs the libraries, the public headers and the package that find_package(QRTCL_DataTypes) finds.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QRTCL_DataTypes)

install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QRTCL_DataTypes
    FILES_MATCHING PATTERN "*.h" PATTERN "*.inc"
    PATTERN "platform" EXCLUDE
    PATTERN "detail" EXCLUDE
    PATTERN "documents" EXCLUDE)
install(TARGETS QRTCL_DataTypes EXPORT QRTCL_DataTypesTargets)
install(EXPORT QRTCL_DataTypesTargets NAMESPACE QRTCL_DataTypes:: DESTINATION ${package_dir})

if(TARGET Documents)
    install(DIRECTORY src/documents DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QRTCL_DataTypes
        FILES_MATCHING PATTERN "*.h" PATTERN "detail" EXCLUDE PATTERN "platform" EXCLUDE)
    install(TARGETS Documents EXPORT QRTCL_DataTypesDocumentsTargets)
    install(EXPORT QRTCL_DataTypesDocumentsTargets NAMESPACE QRTCL_DataTypes:: DESTINATION ${package_dir})
endif()

configure_package_config_file(cmake/QRTCL_DataTypesConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/QRTCL_DataTypesConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/QRTCL_DataTypesConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/QRTCL_DataTypesConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/QRTCL_DataTypesConfigVersion.cmake
    DESTINATION ${package_dir})
