# dozely_add_texts(TARGET FOLDER): compiles the texts in other languages, FOLDER/*.ts, into TARGET, where
# hosts/common/words/CompiledTexts finds them. "hosts/update-texts" brings the files up to date with the sources.
find_package(Qt6 6.4 REQUIRED COMPONENTS LinguistTools)

function(dozely_add_texts target folder)
    file(GLOB texts CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.ts")
    qt6_add_translation(compiled ${texts})
    qt6_add_resources(${target} ${target}_texts PREFIX /translations BASE "${CMAKE_CURRENT_BINARY_DIR}" FILES ${compiled})
endfunction()
