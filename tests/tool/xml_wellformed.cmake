# Checks that the XML of the whole sample tree, as `vorparam eval --raw`
# prints it, is well-formed: xmllint must read it.
#   cmake -DVORPARAM=... -DXMLLINT=... -DWORK=out.xml -P xml_wellformed.cmake
execute_process(COMMAND ${VORPARAM} eval --raw "to_xml(rootpar)"
                RESULT_VARIABLE status OUTPUT_FILE ${WORK})
if(NOT status EQUAL 0)
    message(FATAL_ERROR "vorparam eval --raw exited with ${status}")
endif()
execute_process(COMMAND ${XMLLINT} --noout ${WORK} RESULT_VARIABLE status ERROR_VARIABLE message)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "xmllint refuses the output of vorparam eval --raw:\n${message}")
endif()
file(READ ${WORK} xml)
if(NOT xml MATCHES "<ref name=\"cutter\" target=\"tool\">\n<map name=\"tool\"")
    message(FATAL_ERROR "the reference strategy.cutter is not expanded:\n${xml}")
endif()
