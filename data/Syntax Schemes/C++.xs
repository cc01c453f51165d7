// Language: C++ (Builder)
// C and C++ with the C++Builder extensions. States and tokens first: a rule
// can only name what is declared above it.
State=snormal,CaseSensitive
State=sstring,CaseSensitive
State=schar,CaseSensitive
State=scomment,CaseSensitive
State=slinecomment,CaseSensitive
State=sdirective,CaseSensitive
State=sdircontinued,CaseSensitive
Token=tnone
Token=tstring
Token=tcomment
Token=tident
Token=tinteger
Token=tfloat
Token=tresword
Token=tresword1
Token=tresword2
Token=tdirective
Delimiters=.,;:()[]{}<>=+-*/%&|^!~?"'\#
// Fold regions: a brace alone on its line folds from the heading line above it.
CollapseStartAtPriorLine={
CollapseEnd=}
//
// Identifiers; keywords win over this rule whatever their order.
snormal [a-z_A-Z][a-z_A-Z0-9]* snormal tident
//
// Numbers. Within one first character the rule written last is tried first:
// float before hexadecimal before integer.
snormal [0-9]+[uUlL]* snormal tinteger
snormal 0[xX][0-9a-fA-F]+[uUlL]* snormal tinteger
snormal [0-9]+[eE][+\-]|[0-9]+[fFlL]| snormal tfloat
snormal [0-9]+\.[0-9]*{[eE][+\-]|[0-9]+}|[fFlL]| snormal tfloat
snormal \.[0-9]+{[eE][+\-]|[0-9]+}|[fFlL]| snormal tfloat
//
// Strings and characters end at the line's end when left open.
snormal " sstring tstring
sstring [^"\\]+ sstring tstring
sstring \\. sstring tstring
sstring " snormal tstring
sstring $ snormal tstring
snormal \' schar tstring
schar [^\'\\]+ schar tstring
schar \\. schar tstring
schar \' snormal tstring
schar $ snormal tstring
//
// Comments: // to the end of the line, /* */ over any number of lines.
snormal // slinecomment tcomment
slinecomment [#1-#255]* snormal tcomment
slinecomment $ snormal tcomment
snormal /\* scomment tcomment
scomment [^\*]+ scomment tcomment
scomment \* scomment tcomment
scomment \*+/ snormal tcomment
//
// Preprocessor lines, from "#" in the first column or after blanks; a
// backslash at the end carries the directive into the next line.
snormal ^\#[#32#9]*[a-z_A-Z]* sdirective tdirective
snormal ^[#32#9]+\#[#32#9]*[a-z_A-Z]* sdirective tdirective
sdirective [^/\\]+ sdirective tdirective
sdirective / sdirective tdirective
sdirective \\ sdirective tdirective
sdirective \\$ sdircontinued tdirective
sdirective // slinecomment tcomment
sdirective /\* scomment tcomment
sdirective $ snormal tdirective
sdircontinued [^/\\]+ sdirective tdirective
sdircontinued / sdirective tdirective
sdircontinued \\ sdirective tdirective
sdircontinued \\$ sdircontinued tdirective
//
// Reserved words of the language.
snormal 'alignas' snormal tresword
snormal 'alignof' snormal tresword
snormal 'and' snormal tresword
snormal 'and_eq' snormal tresword
snormal 'asm' snormal tresword
snormal 'auto' snormal tresword
snormal 'bitand' snormal tresword
snormal 'bitor' snormal tresword
snormal 'bool' snormal tresword
snormal 'break' snormal tresword
snormal 'case' snormal tresword
snormal 'catch' snormal tresword
snormal 'char' snormal tresword
snormal 'char8_t' snormal tresword
snormal 'char16_t' snormal tresword
snormal 'char32_t' snormal tresword
snormal 'class' snormal tresword
snormal 'compl' snormal tresword
snormal 'concept' snormal tresword
snormal 'const' snormal tresword
snormal 'consteval' snormal tresword
snormal 'constexpr' snormal tresword
snormal 'constinit' snormal tresword
snormal 'const_cast' snormal tresword
snormal 'continue' snormal tresword
snormal 'co_await' snormal tresword
snormal 'co_return' snormal tresword
snormal 'co_yield' snormal tresword
snormal 'decltype' snormal tresword
snormal 'default' snormal tresword
snormal 'delete' snormal tresword
snormal 'do' snormal tresword
snormal 'double' snormal tresword
snormal 'dynamic_cast' snormal tresword
snormal 'else' snormal tresword
snormal 'enum' snormal tresword
snormal 'explicit' snormal tresword
snormal 'export' snormal tresword
snormal 'extern' snormal tresword
snormal 'false' snormal tresword
snormal 'float' snormal tresword
snormal 'for' snormal tresword
snormal 'friend' snormal tresword
snormal 'goto' snormal tresword
snormal 'if' snormal tresword
snormal 'inline' snormal tresword
snormal 'int' snormal tresword
snormal 'long' snormal tresword
snormal 'mutable' snormal tresword
snormal 'namespace' snormal tresword
snormal 'new' snormal tresword
snormal 'noexcept' snormal tresword
snormal 'not' snormal tresword
snormal 'not_eq' snormal tresword
snormal 'nullptr' snormal tresword
snormal 'operator' snormal tresword
snormal 'or' snormal tresword
snormal 'or_eq' snormal tresword
snormal 'private' snormal tresword
snormal 'protected' snormal tresword
snormal 'public' snormal tresword
snormal 'register' snormal tresword
snormal 'reinterpret_cast' snormal tresword
snormal 'requires' snormal tresword
snormal 'return' snormal tresword
snormal 'short' snormal tresword
snormal 'signed' snormal tresword
snormal 'sizeof' snormal tresword
snormal 'static' snormal tresword
snormal 'static_assert' snormal tresword
snormal 'static_cast' snormal tresword
snormal 'struct' snormal tresword
snormal 'switch' snormal tresword
snormal 'template' snormal tresword
snormal 'this' snormal tresword
snormal 'thread_local' snormal tresword
snormal 'throw' snormal tresword
snormal 'true' snormal tresword
snormal 'try' snormal tresword
snormal 'typedef' snormal tresword
snormal 'typeid' snormal tresword
snormal 'typename' snormal tresword
snormal 'union' snormal tresword
snormal 'unsigned' snormal tresword
snormal 'using' snormal tresword
snormal 'virtual' snormal tresword
snormal 'void' snormal tresword
snormal 'volatile' snormal tresword
snormal 'wchar_t' snormal tresword
snormal 'while' snormal tresword
snormal 'xor' snormal tresword
snormal 'xor_eq' snormal tresword
snormal 'override' snormal tresword
snormal 'final' snormal tresword
//
// Common library and platform names.
snormal 'NULL' snormal tresword1
snormal 'size_t' snormal tresword1
snormal 'ptrdiff_t' snormal tresword1
snormal 'int8_t' snormal tresword1
snormal 'int16_t' snormal tresword1
snormal 'int32_t' snormal tresword1
snormal 'int64_t' snormal tresword1
snormal 'uint8_t' snormal tresword1
snormal 'uint16_t' snormal tresword1
snormal 'uint32_t' snormal tresword1
snormal 'uint64_t' snormal tresword1
snormal 'intptr_t' snormal tresword1
snormal 'uintptr_t' snormal tresword1
snormal 'std' snormal tresword1
snormal 'string' snormal tresword1
snormal 'wstring' snormal tresword1
snormal 'vector' snormal tresword1
snormal 'map' snormal tresword1
snormal 'set' snormal tresword1
snormal 'list' snormal tresword1
snormal 'deque' snormal tresword1
snormal 'array' snormal tresword1
snormal 'unique_ptr' snormal tresword1
snormal 'shared_ptr' snormal tresword1
snormal 'weak_ptr' snormal tresword1
snormal 'make_unique' snormal tresword1
snormal 'make_shared' snormal tresword1
snormal 'pair' snormal tresword1
snormal 'tuple' snormal tresword1
snormal 'optional' snormal tresword1
snormal 'variant' snormal tresword1
snormal 'string_view' snormal tresword1
snormal 'function' snormal tresword1
snormal 'move' snormal tresword1
snormal 'forward' snormal tresword1
snormal 'cout' snormal tresword1
snormal 'cerr' snormal tresword1
snormal 'endl' snormal tresword1
snormal 'printf' snormal tresword1
snormal 'sprintf' snormal tresword1
snormal 'fprintf' snormal tresword1
snormal 'malloc' snormal tresword1
snormal 'free' snormal tresword1
snormal 'memcpy' snormal tresword1
snormal 'memset' snormal tresword1
snormal 'strlen' snormal tresword1
snormal 'strcmp' snormal tresword1
snormal 'strcpy' snormal tresword1
snormal 'FILE' snormal tresword1
snormal 'EOF' snormal tresword1
snormal 'TRUE' snormal tresword1
snormal 'FALSE' snormal tresword1
snormal 'BOOL' snormal tresword1
snormal 'BYTE' snormal tresword1
snormal 'WORD' snormal tresword1
snormal 'DWORD' snormal tresword1
snormal 'HANDLE' snormal tresword1
snormal 'HWND' snormal tresword1
snormal 'LPSTR' snormal tresword1
snormal 'LPCSTR' snormal tresword1
snormal 'String' snormal tresword1
snormal 'AnsiString' snormal tresword1
snormal 'UnicodeString' snormal tresword1
snormal 'TObject' snormal tresword1
snormal 'TComponent' snormal tresword1
snormal 'TForm' snormal tresword1
snormal 'TStringList' snormal tresword1
snormal 'Exception' snormal tresword1
snormal 'ShowMessage' snormal tresword1
snormal 'Application' snormal tresword1
//
// C++Builder extensions.
snormal '__fastcall' snormal tresword2
snormal '__published' snormal tresword2
snormal '__property' snormal tresword2
snormal '__closure' snormal tresword2
snormal '__declspec' snormal tresword2
snormal '__classid' snormal tresword2
snormal '__finally' snormal tresword2
snormal '__try' snormal tresword2
snormal '__except' snormal tresword2
snormal '__int8' snormal tresword2
snormal '__int16' snormal tresword2
snormal '__int32' snormal tresword2
snormal '__int64' snormal tresword2
snormal '__stdcall' snormal tresword2
snormal '__cdecl' snormal tresword2
snormal '__pascal' snormal tresword2
snormal '__rtti' snormal tresword2
snormal '__automated' snormal tresword2
snormal '__inline' snormal tresword2
snormal '__thread' snormal tresword2
snormal '__dispid' snormal tresword2
snormal '__msfastcall' snormal tresword2
snormal '__asm' snormal tresword2
snormal '_export' snormal tresword2
snormal '_import' snormal tresword2
snormal 'dynamic' snormal tresword2
