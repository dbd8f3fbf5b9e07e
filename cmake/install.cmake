# What `cmake --install` installs and where, so that find_package(ZEB5XML) defines ZEB5XML::ZEB5XML.
include(CMakePackageConfigHelpers)

# The headers have a folder of their own, as names like event.h are common.
set(zeb5_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/ZEB5XML)
set(zeb5_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZEB5XML)
set(zeb5_public_headers
    lib/include/event.h
    lib/include/event_util.h
    lib/include/zeb5_export.h
    library/daq/XML_tools/SAX_File_Parser.h
    library/daq/XML_tools/SAX_Memory_Parser.h
    library/daq/XML_tools/attr_tags_functions.h
    library/daq/XML_tools/chan_selector.h
    library/daq/XML_tools/descr_extractor.h
    library/daq/XML_tools/document_header.h
    library/daq/XML_tools/parse_chan_descr.h
    library/daq/XML_tools/parse_env_index_dictionary.h
    library/daq/XML_tools/parse_ev_list.h
    library/daq/XML_tools/xml_platform.h
    library/daq/XML_tools/zeb5_gige_descr.h)
install(FILES ${zeb5_public_headers} DESTINATION ${zeb5_include_dir})

# A site installs its own event-utility library by itself. The package and the search path in the libraries then refer
# to the place that it had when they were built.
set(zeb5_installed_libraries ZEB5XML)
if(NOT ZEB5XML_EVUTL)
    list(APPEND zeb5_installed_libraries ZEB5evutl)
endif()
set_target_properties(${zeb5_installed_libraries} PROPERTIES INSTALL_RPATH "$ORIGIN"
    INSTALL_RPATH_USE_LINK_PATH ON)
install(TARGETS ${zeb5_installed_libraries} EXPORT ZEB5XMLTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${zeb5_include_dir})

if(TARGET zeb5xml)
    file(RELATIVE_PATH zeb5_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(zeb5xml PROPERTIES INSTALL_RPATH "$ORIGIN/${zeb5_bin_to_lib}"
        INSTALL_RPATH_USE_LINK_PATH ON)
endif()

install(EXPORT ZEB5XMLTargets NAMESPACE ZEB5XML:: DESTINATION ${zeb5_package_dir})
configure_package_config_file(cmake/ZEB5XMLConfig.cmake.in ${PROJECT_BINARY_DIR}/ZEB5XMLConfig.cmake
    INSTALL_DESTINATION ${zeb5_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZEB5XMLConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZEB5XMLConfig.cmake ${PROJECT_BINARY_DIR}/ZEB5XMLConfigVersion.cmake
    DESTINATION ${zeb5_package_dir})
