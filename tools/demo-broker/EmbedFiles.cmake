# cmake -D OUTPUT=x.cpp -D FOLDER=folder -D FILES=a;b -P EmbedFiles.cmake
# Writes the definition of embeddedFiles() with the content of FILES, which are named relative to FOLDER.
set(arrays "")
set(rows "")
set(number 0)
foreach(file IN LISTS FILES)
  file(READ ${FOLDER}/${file} hexadecimal HEX)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${hexadecimal}")
  string(REGEX REPLACE "(................................................................)" "\\1\"\n    \"" bytes "${bytes}")
  string(APPEND arrays "constexpr char kFile${number}[] =\n    \"${bytes}\";\n")
  string(APPEND rows "    {\"${file}\", {kFile${number}, sizeof kFile${number} - 1}},\n")
  math(EXPR number "${number} + 1")
endforeach()
file(WRITE ${OUTPUT}
  "#include \"demo-broker/EmbeddedFiles.h\"\n\nnamespace orvane::demo {\nnamespace {\n${arrays}\n"
  "constexpr EmbeddedFile kFiles[] = {\n${rows}};\n\n}  // namespace\n\n"
  "std::span<const EmbeddedFile> embeddedFiles() { return kFiles; }\n\n}  // namespace orvane::demo\n")
