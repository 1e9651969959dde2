# Writes OUTPUT, a header that tells which checkout a build is made from, when that has changed since the last build:
#   cmake -DSOURCE=folder -DOUTPUT=file -P BuildText.cmake
execute_process(COMMAND git -C ${SOURCE} describe --always --dirty --abbrev=10 --exclude=*
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
if(failed)
    set(build "no checkout")
else()
    set(build "commit ${commit}")
endif()
set(text "#define VORNTOOLS_BUILD \"${build}\"\n")
set(old "")
if(EXISTS ${OUTPUT})
    file(READ ${OUTPUT} old)
endif()
if(NOT text STREQUAL old)
    file(WRITE ${OUTPUT} ${text})
endif()
