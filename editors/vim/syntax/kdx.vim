" A statement may go on in the lines below: behind a backslash the end of a line is passed over. The
" first # begins a comment unless a backslash stands in front of it; then there is none.
if exists('b:current_syntax')
  finish
endif

let s:end = 'skip=/\\\%( [[:space:]]*\)\=$/ end=/$/'
let s:statement = s:end .. ' keepend contains=kdxComment,kdxNoComment'

execute 'syntax region kdxUnknown start=/^[[:space:]]*\zs\ze[^[:space:]#]/' s:statement
execute 'syntax region kdxComment start=/#/' s:end
execute 'syntax region kdxNoComment start=/\\#/' s:end 'contained transparent contains=NONE'
execute 'syntax region kdxVerbatim start=/^[[:space:]]*\zs\$/' s:statement
execute 'syntax region kdxVerbatim start=/^[[:space:]]*\zs!/' s:end 'keepend'
execute 'syntax region kdxAction start=/^[[:space:]]*\zs>/' s:statement
syntax match kdxEnd /^[[:space:]]*\zsEND\ze[[:space:]]*\(#\|$\)/
syntax match kdxType /^[[:space:]]*\zs[A-Za-z0-9 &._]*\ze:/ nextgroup=kdxColon
syntax match kdxColon /:[[:space:]]*/ contained nextgroup=kdxName
execute 'syntax region kdxName start=/.\@=/' s:statement 'contained'
syntax match kdxParameter /^[[:space:]]*\zs[A-Za-z0-9 &._]*\ze=/ nextgroup=kdxEquals
syntax match kdxEquals /=[[:space:]]*/ contained nextgroup=kdxValue
execute 'syntax region kdxValue start=/.\@=/' s:statement 'contained'
syntax sync minlines=50

highlight default link kdxUnknown Error
highlight default link kdxComment Comment
highlight default link kdxVerbatim PreProc
highlight default link kdxAction Function
highlight default link kdxEnd Keyword
highlight default link kdxType Type
highlight default link kdxName Identifier
highlight default link kdxParameter Label
highlight default link kdxValue String

let b:current_syntax = 'kdx'
