" Colours for level scripts of Zel. Written by generate_editor_files; change that.
if exists("b:current_syntax")
  finish
endif
syntax case ignore
syntax keyword zelStatement if else for do while return end
syntax keyword zelType char int
syntax keyword zelBuiltin getche putch puts print getnum showimage moveimage getimagex getimagey changesizeimage loadimage createtimer addexectfunckey changewindowname fullscreen pausetimer deletetimer getlasttimer getcurrenttimer getcurrentkey changefunckey deletefunckey exitgame getmousex getmousey changeallfont changeallcolorfont createtext deletetext hidetext getlastgametext movegametext getgametextx getgametexty setgametextwh createunit moveunit getunitx getunity getlastcreatedunit
syntax match zelNumber /\<\d\+\>/
syntax match zelForeign /[#$&.:?@\[\\\]`|~]\|!=\@!/
syntax match zelCharacter /'[^\r]'/
syntax region zelString start=/"/ end=/"/ oneline
syntax match zelComment /\/\/.*/
syntax region zelComment start=/\/\*/ end=/\*\//
highlight default link zelStatement Statement
highlight default link zelType Type
highlight default link zelBuiltin Function
highlight default link zelNumber Number
highlight default link zelForeign Error
highlight default link zelCharacter Character
highlight default link zelString String
highlight default link zelComment Comment
let b:current_syntax = "zel"
