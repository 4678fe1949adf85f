# Writes the files of the phone page as a C++ source, so that the program carries its pages with it.
#   cmake -DFOLDER=... -DOUT=... -P embed.cmake
set(table "/=phone.html /join=join.html /phone.css=phone.css /phone.js=phone.js /join.css=join.css /join.js=join.js /icon.svg=icon.svg")
set(type_html "text/html; charset=utf-8")
set(type_css "text/css; charset=utf-8")
set(type_js "text/javascript; charset=utf-8")
set(type_svg "image/svg+xml")

set(arrays "")
set(rows "")
set(count 0)
separate_arguments(table)
foreach(entry ${table})
  string(REGEX MATCH "^(.*)=(.*)\\.([a-z]+)$" unused "${entry}")
  set(path "${CMAKE_MATCH_1}")
  set(kind "${CMAKE_MATCH_3}")
  file(READ "${FOLDER}/${CMAKE_MATCH_2}.${kind}" hex HEX)
  string(LENGTH "${hex}" length)
  math(EXPR length "${length} / 2")
  string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${hex}")
  string(APPEND arrays "const char file${count}[] = {${bytes}0};\n")
  string(APPEND rows "    {\"${path}\", \"${type_${kind}}\", {file${count}, ${length}}},\n")
  math(EXPR count "${count} + 1")
endforeach()

file(WRITE "${OUT}.new" "// Written at build time from controller/web.
#include \"controller/server/page.h\"

namespace qrn::controller {

namespace {

${arrays}
const Asset assets[] = {
${rows}};

}  // namespace

const Asset* findAsset(std::string_view path) {
  for (const Asset& asset : assets)
    if (asset.path == path)
      return &asset;
  return nullptr;
}

}  // namespace qrn::controller
")
file(RENAME "${OUT}.new" "${OUT}")
