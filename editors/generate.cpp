// Writes the syntax files of the editors from the engine's own tables, so that a new word of the
// language is coloured at once: generate_editor_files FOLDER, where FOLDER is editors/.
#include <cctype>
#include <cstdio>
#include <fstream>
#include <string>

#include "script/host/builtin_list.h"
#include "script/source/lexer.h"

// The keywords of one kind, with `separator` between them.
static std::string keywords(bool types, const std::string& separator) {
    std::string list;
    for (const KeywordName& keyword : gKeywords) {
        const bool isType = keyword.code == KeywordCode::Char || keyword.code == KeywordCode::Int;
        if (keyword.name[0] == '\0' || isType != types) continue;
        list += (list.empty() ? "" : separator) + keyword.name;
    }
    return list;
}

static std::string builtins(const std::string& separator) {
    std::string list;
#define ZEL_ROW(name, ...) list += (list.empty() ? "" : separator) + #name;
    ZEL_BUILTINS(ZEL_ROW)
#undef ZEL_ROW
    return list;
}

// The punctuation that starts nothing in the language: the load never gets past it.
static std::string foreignCharacters() {
    const std::string known = std::string(kDelimiters) + "<>!{}\"/_";  // "_" inside names
    std::string foreign;
    for (int c = '!'; c <= '~'; c++) {
        const char character = static_cast<char>(c);
        if (std::ispunct(c) != 0 && known.find(character) == std::string::npos)
            foreign += character;
    }
    return foreign;
}

// The characters for a bracket expression, each escaped by `escape`.
static std::string bracketed(const std::string& characters, const std::string& escape) {
    std::string result;
    for (char c : characters)
        result += (std::string("[]\\^-").find(c) != std::string::npos ? escape : "") + c;
    return result;
}

static std::string vimSyntax() {
    return "\" Colours for level scripts of Zel. Written by generate_editor_files; change that.\n"
           "if exists(\"b:current_syntax\")\n"
           "  finish\n"
           "endif\n"
           "syntax case ignore\n"
           "syntax keyword zelStatement " +
           keywords(false, " ") +
           "\n"
           "syntax keyword zelType " +
           keywords(true, " ") +
           "\n"
           "syntax keyword zelBuiltin " +
           builtins(" ") +
           "\n"
           "syntax match zelNumber /\\<\\d\\+\\>/\n"
           "syntax match zelForeign /[" +
           bracketed(foreignCharacters(), "\\") +
           "]\\|!=\\@!/\n"
           "syntax match zelCharacter /'[^\\r]'/\n"
           "syntax region zelString start=/\"/ end=/\"/ oneline\n"
           "syntax match zelComment /\\/\\/.*/\n"
           "syntax region zelComment start=/\\/\\*/ end=/\\*\\//\n"
           "highlight default link zelStatement Statement\n"
           "highlight default link zelType Type\n"
           "highlight default link zelBuiltin Function\n"
           "highlight default link zelNumber Number\n"
           "highlight default link zelForeign Error\n"
           "highlight default link zelCharacter Character\n"
           "highlight default link zelString String\n"
           "highlight default link zelComment Comment\n"
           "let b:current_syntax = \"zel\"\n";
}

static std::string textMateRule(const std::string& name, const std::string& match) {
    std::string escaped;
    for (char c : match)
        escaped += (c == '\\' || c == '"' ? "\\" : "") + std::string(1, c);
    return "    { \"name\": \"" + name + ".zel\", \"match\": \"" + escaped + "\" }";
}

static std::string words(const std::string& alternatives) {
    return "(?i)\\b(" + alternatives + ")\\b";
}

static std::string textMateGrammar() {
    return "{\n"
           "  \"comment\": \"Written by generate_editor_files; change that.\",\n"
           "  \"name\": \"Zel level script\",\n"
           "  \"scopeName\": \"source.zel\",\n"
           "  \"patterns\": [\n"
           "    { \"name\": \"comment.block.zel\", \"begin\": \"/\\\\*\", \"end\": \"\\\\*/\" "
           "},\n" +
           textMateRule("comment.line", "//.*$") + ",\n" +
           textMateRule("string.quoted.double", "\"[^\"]*\"") + ",\n" +
           textMateRule("constant.character", "'.'") + ",\n" +
           textMateRule("keyword.control", words(keywords(false, "|"))) + ",\n" +
           textMateRule("storage.type", words(keywords(true, "|"))) + ",\n" +
           textMateRule("support.function", words(builtins("|"))) + ",\n" +
           textMateRule("constant.numeric", "\\b[0-9]+\\b") + ",\n" +
           textMateRule("invalid.illegal",
                        "[" + bracketed(foreignCharacters(), "\\") + "]|!(?!=)") +
           "\n"
           "  ]\n"
           "}\n";
}

static bool write(const std::string& path, const std::string& content) {
    std::ofstream file(path, std::ios::binary);
    file << content;
    file.close();
    if (!file) std::fprintf(stderr, "cannot write %s\n", path.c_str());
    return !file.fail();
}

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("Usage: generate_editor_files FOLDER\n", stderr);
        return 1;
    }
    const std::string folder = arguments[1];
    const bool vim = write(folder + "/vim/syntax/zel.vim", vimSyntax());
    const bool vscode = write(folder + "/vscode/syntaxes/zel.tmLanguage.json", textMateGrammar());
    return vim && vscode ? 0 : 1;
}
