# cmake -DPAGES_DIR=... -DOUTPUT=... -P embed_pages.cmake: the pages of a folder as a C++ table.
file(GLOB pages ${PAGES_DIR}/*.md)
set(table "")
foreach(page IN LISTS pages)
  get_filename_component(name ${page} NAME_WE)
  file(READ ${page} content)
  string(APPEND table "    {\"${name}\", R\"page(${content})page\"},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"finding_pages.h\"

namespace kgen {
namespace {

constexpr FindingPage pages[] = {
${table}};

}  // namespace

std::span<const FindingPage> findingPages() { return pages; }

}  // namespace kgen
")
