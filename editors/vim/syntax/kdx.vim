" A statement may go on in the lines below: behind a backslash the end of a line is passed over. The
" first # begins a comment unless a backslash stands in front of it; then there is none.
if exists('b:current_syntax')
  finish
endif

syntax region kdxUnknown start=/^\s*\zs[^[:blank:]#]/ skip=/\\\s*$/ end=/$/ keepend contains=kdxComment,kdxNoComment
syntax region kdxComment start=/#/ skip=/\\\s*$/ end=/$/
syntax region kdxNoComment start=/\\#/ skip=/\\\s*$/ end=/$/ contained
syntax region kdxVerbatim start=/^\s*\zs\$/ skip=/\\\s*$/ end=/$/ keepend contains=kdxComment,kdxNoComment
syntax region kdxVerbatim start=/^\s*\zs!/ skip=/\\\s*$/ end=/$/ keepend
syntax region kdxAction start=/^\s*\zs>/ skip=/\\\s*$/ end=/$/ keepend contains=kdxComment,kdxNoComment
syntax match kdxEnd /^\s*\zsEND\ze\s*\(#\|$\)/
syntax match kdxType /^\s*\zs[A-Za-z0-9 &._]*\ze:/ nextgroup=kdxColon
syntax match kdxColon /:\s*/ contained nextgroup=kdxName
syntax region kdxName start=/./ skip=/\\\s*$/ end=/$/ keepend contained contains=kdxComment,kdxNoComment
syntax match kdxParameter /^\s*\zs[A-Za-z0-9 &._]*\ze=/ nextgroup=kdxEquals
syntax match kdxEquals /=\s*/ contained nextgroup=kdxValue
syntax region kdxValue start=/./ skip=/\\\s*$/ end=/$/ keepend contained contains=kdxComment,kdxNoComment
syntax sync minlines=50

highlight default link kdxUnknown Error
highlight default link kdxComment Comment
highlight default link kdxNoComment String
highlight default link kdxVerbatim PreProc
highlight default link kdxAction Function
highlight default link kdxEnd Keyword
highlight default link kdxType Type
highlight default link kdxName Identifier
highlight default link kdxParameter Label
highlight default link kdxValue String

let b:current_syntax = 'kdx'
