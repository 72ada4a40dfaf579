" :make checks the script of the current window; :copen shows what was found.
if exists("current_compiler")
  finish
endif
let current_compiler = "zelcheck"
CompilerSet makeprg=zelcheck\ %:S
CompilerSet errorformat=%f:%l:%c:\ %trror:\ %m,%f:%l:%c:\ %tarning:\ %m,%-G%.%#
