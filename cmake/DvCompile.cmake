# How every target of the project is compiled, and how the runtime-free ones are linked.

add_library(dv_warnings INTERFACE)
target_compile_options(dv_warnings INTERFACE
    -Wall -Wextra -Wconversion -Wshadow
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
    $<$<BOOL:${DV_WERROR}>:-Werror>)

# A product that is fused with a sum is rounded once instead of twice. Some machines can, some cannot: it is never done,
# so that what is computed in floating point is the same on all.
add_compile_options(-ffp-contract=off)

if(DV_SANITIZE)
    # The libraries link without the C++ runtime, which the vptr check would need.
    add_compile_options(-fsanitize=${DV_SANITIZE} -fno-omit-frame-pointer -g1)
    add_link_options(-fsanitize=${DV_SANITIZE})
    if(DV_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize=vptr -fno-sanitize-recover=undefined)
    endif()
endif()

# Targets that link as C get no C++ runtime for the C++ objects in them; a C++ link brings it by itself.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")

# Compiles a target's C++ so that it needs libc and libm alone at run time: no type information, no guards
# around local statics, no handlers of exceptions. Unwind tables stay: a host's base library may raise by an
# exception, which passes through. Headers of the standard library have functions that name the runtime unless
# the optimiser sees that they do not need it, so it always looks a little. An object that needs the C++ runtime
# all the same fails to link; not with HOSTED, for a module that finds symbols in the program that loads it.
function(dv_without_cxx_runtime target)
    target_compile_options(${target} PRIVATE
        $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti -fno-threadsafe-statics -fno-exceptions -fasynchronous-unwind-tables>
        $<$<OR:$<CONFIG:Debug>,$<STREQUAL:$<CONFIG>,>>:-O1>)
    set_target_properties(${target} PROPERTIES LINKER_LANGUAGE C)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "SHARED|MODULE" AND NOT DV_SANITIZE AND NOT "HOSTED" IN_LIST ARGN)  # sanitizers leave their runtime to the program
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
endfunction()
