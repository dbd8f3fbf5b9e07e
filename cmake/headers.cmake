# The public headers, in one folder of the build tree as they are in an installed one, so that programs include
# <ZEB5XML/event.h> from either. The folder that they search has nothing else, and no name such as event.h.
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
    library/daq/XML_tools/zeb5xml.hpp
    library/daq/XML_tools/zeb5xml_files.hpp
    library/daq/XML_tools/zeb5_gige_descr.h)

set(zeb5_build_include ${PROJECT_BINARY_DIR}/include)
set(zeb5_build_headers ${zeb5_build_include}/ZEB5XML) # for what is built here and leaves out the folder's name
file(MAKE_DIRECTORY ${zeb5_build_headers})
foreach(header ${zeb5_public_headers})
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${header} ${zeb5_build_headers}/${name} SYMBOLIC)
endforeach()
