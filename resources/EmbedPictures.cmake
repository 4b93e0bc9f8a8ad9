# cmake -DOUT_H=… -DOUT_CPP=… -DFOLDER=… -P EmbedPictures.cmake: every PNG file of the folder as an array
# PICTURE_NAME with its length PICTURE_NAME_SIZE.
file(GLOB aFiles ${FOLDER}/*.png)
list(SORT aFiles)
set(strHeader "#pragma once\n\n#include <cstddef>\n#include <cstdint>\n\n")
set(strSource "#include \"resources/Pictures.h\"\n\n")
foreach(strFile IN LISTS aFiles)
    get_filename_component(strName ${strFile} NAME_WE)
    string(TOUPPER "PICTURE_${strName}" strName)
    file(READ ${strFile} strHex HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," strBytes "${strHex}")
    string(APPEND strHeader "extern const uint8_t ${strName}[];\nextern const size_t ${strName}_SIZE;\n")
    string(APPEND strSource "const uint8_t ${strName}[] = {${strBytes}};\n"
                            "const size_t ${strName}_SIZE = sizeof(${strName});\n")
endforeach()
file(WRITE ${OUT_H} "${strHeader}")
file(WRITE ${OUT_CPP} "${strSource}")
