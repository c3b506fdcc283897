# Makes the Windows package of an installation folder, whatever files it holds:
#     cmake -DFOLDER=... -DICON=... -DVERSION=1.2.3 -DMSI=... -P MakeMsi.cmake
cmake_minimum_required(VERSION 3.25)
foreach(name FOLDER ICON VERSION MSI)
    if(NOT DEFINED ${name})
        message(FATAL_ERROR "MakeMsi.cmake: ${name} is not given")
    endif()
endforeach()
find_program(WIXL wixl REQUIRED)
find_program(MSIBUILD msibuild REQUIRED)
cmake_path(ABSOLUTE_PATH FOLDER NORMALIZE)
cmake_path(ABSOLUTE_PATH ICON NORMALIZE)
# wixl takes no absolute paths; it runs in the installation folder.
cmake_path(RELATIVE_PATH ICON BASE_DIRECTORY ${FOLDER})
cmake_path(ABSOLUTE_PATH MSI NORMALIZE)

# The same version is the same product, whoever builds it.
string(UUID PRODUCT_CODE NAMESPACE 2b1e1f0c-6c0b-4d0e-9f57-5f0a7c3b61e4 NAME ${VERSION} TYPE SHA1 UPPER)

# The version that a program or library carries, as in VS_FIXEDFILEINFO: its mark, a number, then the version's two words.
function(version_of file result)
    set(${result} "" PARENT_SCOPE)
    if(NOT file MATCHES "\\.(exe|dll)$")
        return()
    endif()
    file(READ ${file} hex HEX)
    if(NOT hex MATCHES "bd04effe00000100(........)(........)")
        return()
    endif()
    set(numbers)
    foreach(word ${CMAKE_MATCH_1} ${CMAKE_MATCH_2})
        string(REGEX REPLACE "(..)(..)(..)(..)" "0x\\4\\3;0x\\2\\1" halves ${word})
        foreach(half ${halves})
            math(EXPR number ${half})
            list(APPEND numbers ${number})
        endforeach()
    endforeach()
    list(JOIN numbers . version)
    set(${result} ${version} PARENT_SCOPE)
endfunction()

set(FILES)
set(COMPONENTS)
set(versions)
# The files of a folder beneath FOLDER and of the folders in it, each a component of its own.
function(add_folder folder indent)
    file(GLOB names RELATIVE ${FOLDER}/${folder} ${FOLDER}/${folder}/*)
    foreach(name ${names})
        set(path ${name})
        if(folder)
            set(path ${folder}/${name})
        endif()
        string(MAKE_C_IDENTIFIER ${path} id)
        if(IS_DIRECTORY ${FOLDER}/${path})
            string(APPEND FILES "${indent}<Directory Id=\"d_${id}\" Name=\"${name}\">\n")
            add_folder(${path} "${indent}  ")
            string(APPEND FILES "${indent}</Directory>\n")
            continue()
        endif()
        # These are the office's, also when the program was tried in this folder.
        if(name MATCHES "\\.(ini|lst|csv|tmp)$")
            continue()
        endif()
        string(APPEND FILES "${indent}<Component Id=\"c_${id}\" Guid=\"*\" Win64=\"yes\">"
            "<File Id=\"f_${id}\" Name=\"${name}\" Source=\"${path}\" KeyPath=\"yes\"/></Component>\n")
        string(APPEND COMPONENTS "      <ComponentRef Id=\"c_${id}\"/>\n")
        version_of(${FOLDER}/${path} version)
        if(version)
            list(APPEND versions f_${id}=${version})
        endif()
    endforeach()
    set(FILES "${FILES}" PARENT_SCOPE)
    set(COMPONENTS "${COMPONENTS}" PARENT_SCOPE)
    set(versions "${versions}" PARENT_SCOPE)
endfunction()
add_folder("" "          ")

cmake_path(REMOVE_EXTENSION MSI LAST_ONLY OUTPUT_VARIABLE source)
configure_file(${CMAKE_CURRENT_LIST_DIR}/zelvora.wxs ${source}.wxs @ONLY)
file(REMOVE ${MSI})
execute_process(COMMAND ${WIXL} --arch x64 --output ${MSI} ${source}.wxs WORKING_DIRECTORY ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)

# Each a query by itself, for it may hold what divides a list.
function(change query)
    execute_process(COMMAND ${MSIBUILD} ${MSI} -q "${query}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Without its version in the table a newer program counts as older than the one that it is to replace.
foreach(entry ${versions})
    string(REGEX MATCH "(.*)=(.*)" entry ${entry})
    change("UPDATE `File` SET `Version`='${CMAKE_MATCH_2}', `Language`='1033' WHERE `File`='${CMAKE_MATCH_1}'")
    change("DELETE FROM `MsiFileHash` WHERE `File_`='${CMAKE_MATCH_1}'")
endforeach()
# The entry of the office's folder: a profile that has one keeps it, and none is ever removed (16; 256 is 64 bit).
change("UPDATE `Component` SET `Attributes`=272, `Condition`='MASTERFOLDER' WHERE `Component`='Profile'")
change("CREATE TABLE `IniFile` (`IniFile` CHAR(72) NOT NULL, `FileName` CHAR(255) NOT NULL LOCALIZABLE, `DirProperty` CHAR(72), \
`Section` CHAR(96) NOT NULL LOCALIZABLE, `Key` CHAR(128) NOT NULL LOCALIZABLE, `Value` CHAR(255) NOT NULL LOCALIZABLE, \
`Action` INT NOT NULL, `Component_` CHAR(72) NOT NULL PRIMARY KEY `IniFile`)")
change("INSERT INTO `IniFile` (`IniFile`, `FileName`, `DirProperty`, `Section`, `Key`, `Value`, `Action`, `Component_`) \
VALUES ('MasterFolder', 'Zelvora.ini', 'INSTALLDIR', 'Path', 'ZVRpath', '[MASTERFOLDER]', 1, 'Profile')")
change("INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('WriteIniValues', 5100)")
# What may be set on the command line although Windows asks for more rights in between.
change("UPDATE `Property` SET `Value`='WIX_DOWNGRADE_DETECTED;WIX_UPGRADE_DETECTED;INSTALLDIR;MASTERFOLDER' \
WHERE `Property`='SecureCustomProperties'")
file(REMOVE ${source}.wxs)
