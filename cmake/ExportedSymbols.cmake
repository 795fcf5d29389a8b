# Only the library's own names leave libvorparameter.so. Hidden visibility
# keeps the internals in, but the standard library's templates have default
# visibility of their own, so every std::vector, std::regex or std::shared_ptr
# member the library instantiates would be exported too: part of the ABI, and
# open to interposition by a host's copy built with other flags. The version
# script cmake/vorparameter.map names what is exported and makes the rest
# local; the test install.exported_symbols checks the result.
include(CheckLinkerFlag)

set(VORPARAMETER_VERSION_SCRIPT ${PROJECT_SOURCE_DIR}/cmake/vorparameter.map)
check_linker_flag(CXX "LINKER:--version-script=${VORPARAMETER_VERSION_SCRIPT}"
                  VORPARAMETER_LINKER_HAS_VERSION_SCRIPT)
if(VORPARAMETER_LINKER_HAS_VERSION_SCRIPT)
    target_link_options(vorparameter PRIVATE
                        "LINKER:--version-script=${VORPARAMETER_VERSION_SCRIPT}")
    set_property(TARGET vorparameter APPEND PROPERTY LINK_DEPENDS ${VORPARAMETER_VERSION_SCRIPT})
else()
    message(WARNING "the linker takes no --version-script: libvorparameter exports "
                    "standard-library template instantiations besides its own names")
endif()
