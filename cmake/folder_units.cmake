# Compiles the sources that a target has in one folder as one unit, which takes a fourth of the time
# for a whole build and longer after a change.  Files of a folder share their unnamed namespaces then.

function(tarquil_unite_folders directory)
    get_property(targets DIRECTORY ${directory} PROPERTY BUILDSYSTEM_TARGETS)
    # The kernels must not see each other's helpers, tools take only a part of the VST 2 plug-in,
    # benchmarks are few, and the window library is not ours.
    list(FILTER targets EXCLUDE REGEX "^(tarquil_kernels_|tarquil_vst$|dgl)|_bench$")
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(type MATCHES "^(UTILITY|INTERFACE_LIBRARY)$")
            continue()
        endif()
        get_target_property(sources ${target} SOURCES)
        get_target_property(base ${target} SOURCE_DIR)
        foreach(source IN LISTS sources)
            if(NOT source MATCHES "[.]cpp$")
                continue()
            endif()
            cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${base})
            get_source_file_property(group ${source} TARGET_DIRECTORY ${target} UNITY_GROUP)
            if(NOT group)
                cmake_path(GET source PARENT_PATH folder)
                cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
                string(MAKE_C_IDENTIFIER "${folder}" group)
                set_source_files_properties(${source} TARGET_DIRECTORY ${target}
                                            PROPERTIES UNITY_GROUP ${group})
            endif()
        endforeach()
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
        # A name of one file may hide another's, and no file is a header.
        target_compile_options(${target} PRIVATE -Wno-shadow
                               $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    endforeach()
    get_property(folders DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
    foreach(folder IN LISTS folders)
        tarquil_unite_folders(${folder})
    endforeach()
endfunction()
