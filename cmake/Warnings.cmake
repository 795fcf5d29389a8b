# Strict warnings for every target of the project.
function(vorparameter_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow
                                             -Wnon-virtual-dtor -Woverloaded-virtual)
    if(VORPARAMETER_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
