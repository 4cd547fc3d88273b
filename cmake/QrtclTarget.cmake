# What every target of this project is built with: the language, the warnings, the sanitizers.

# The rounding of stored numbers must not depend on the compiler: no fused multiply-add.
function(qrtcl_target target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -ffp-contract=off)
    if(QRTCL_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(QRTCL_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${QRTCL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${QRTCL_SANITIZE})
    endif()
endfunction()

# A library of the project. Only src/library/ may hold objects that are built at load or destroyed at exit:
# clang refuses them everywhere else.
function(qrtcl_library target)
    qrtcl_target(${target})
    # Nobody replaces an exported function of the library, so its own calls of them may be inlined.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
    set_target_properties(${target} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        get_target_property(sources ${target} SOURCES)
        list(FILTER sources EXCLUDE REGEX "/library/")
        set_property(SOURCE ${sources} TARGET_DIRECTORY ${target} APPEND PROPERTY
            COMPILE_OPTIONS -Wglobal-constructors -Wexit-time-destructors)
    endif()
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/QRTCL_DataTypes>)
    if(NOT BUILD_SHARED_LIBS)
        target_compile_definitions(${target} PUBLIC QRTCL_STATIC)
    endif()
    # The vectors are the language's own, with its own checks.
    if(QRTCL_CONTRACT_CHECKS)
        target_compile_definitions(${target} PUBLIC QRTCL_CONTRACT_CHECKS _GLIBCXX_ASSERTIONS)
    endif()
endfunction()
