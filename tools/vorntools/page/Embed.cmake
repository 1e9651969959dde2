# Writes the page's text as a C++ source: cmake -DFOLDER=... -DOUTPUT=... -P Embed.cmake. Bytes as numbers, since
# compilers limit the length of a string literal.

function(read_hex file variable)
    file(READ ${FOLDER}/${file} hex HEX)
    set(${variable} "${hex}" PARENT_SCOPE)
endfunction()

function(hex_of text variable)
    file(WRITE ${OUTPUT}.text "${text}")
    file(READ ${OUTPUT}.text hex HEX)
    file(REMOVE ${OUTPUT}.text)
    set(${variable} "${hex}" PARENT_SCOPE)
endfunction()

# Cuts a text in two where a line of the page names what stands there.
function(cut_at marker hex before behind)
    hex_of("<!-- ${marker} -->" marker_hex)
    string(FIND "${hex}" "${marker_hex}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "page.html does not say where ${marker} stands")
    endif()
    string(LENGTH "${marker_hex}" length)
    math(EXPR end "${at} + ${length}")
    string(SUBSTRING "${hex}" 0 ${at} first)
    string(SUBSTRING "${hex}" ${end} -1 second)
    set(${before} "${first}" PARENT_SCOPE)
    set(${behind} "${second}" PARENT_SCOPE)
endfunction()

function(write_array name hex)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${hex}")
    string(REPLACE "0x0a," "0x0a,\n" bytes "${bytes}")
    file(APPEND ${OUTPUT} "\nconst unsigned char ${name}[] = {\n${bytes}};\n")
endfunction()

read_hex(page.html page)
read_hex(page.css style)
read_hex(model.js model)
read_hex(page.js script)
cut_at("page.css" "${page}" head page)
cut_at("data" "${page}" before_data behind_data)
cut_at("model.js page.js" "${behind_data}" before_script end)
foreach(tag "<style>" "</style>" "<script>" "</script>")
    string(MAKE_C_IDENTIFIER "${tag}" variable)
    hex_of("${tag}\n" tag_${variable})
    hex_of("${tag}" text)
    string(FIND "${style}${model}${script}" "${text}" at)
    if(NOT at EQUAL -1)
        message(FATAL_ERROR "${tag} stands in the style or in a script and would end it")
    endif()
endforeach()

file(WRITE ${OUTPUT} "#include \"tools/vorntools/page/Page.h\"\n\nnamespace {\n")
write_array(kHead "${head}${tag__style_}${style}${tag___style_}${before_data}")
write_array(kTail "${before_script}${tag__script_}${model}${script}${tag___script_}${end}")
file(APPEND ${OUTPUT} "
} // namespace

std::string_view pageHead() { return {reinterpret_cast<const char*>(kHead), sizeof kHead}; }
std::string_view pageTail() { return {reinterpret_cast<const char*>(kTail), sizeof kTail}; }
")
