# Writes the files of the page as a source file: cmake -DOUTPUT=FILE -DFOLDER=FOLDER -DFILES=NAME;... -P embed.cmake
set(types_html "text/html; charset=utf-8")
set(types_css "text/css; charset=utf-8")
set(types_js "text/javascript; charset=utf-8")
set(arrays "")
set(rows "")
foreach(name IN LISTS FILES)
    file(READ ${FOLDER}/${name} bytes HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
    string(MAKE_C_IDENTIFIER ${name} identifier)
    string(REGEX REPLACE "^.*\\." "" extension ${name})
    string(APPEND arrays "constexpr unsigned char ${identifier}[] = {${bytes}};\n")
    string(APPEND rows "    {\"${name}\", \"${types_${extension}}\", Text(${identifier})},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"BrowserPage.h\"

namespace
{
${arrays}
template <size_t Size>
std::string_view Text(const unsigned char (&bytes)[Size])
{
    return {reinterpret_cast<const char*>(bytes), Size};
}

const BrowserPageFile kFiles[] = {
${rows}};
}  // namespace

std::span<const BrowserPageFile> BrowserPageFiles()
{
    return kFiles;
}
")
