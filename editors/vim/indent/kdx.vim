if exists('b:did_indent')
  finish
endif
let b:did_indent = 1

setlocal indentexpr=KdxIndent() indentkeys=o,O,0=END
let b:undo_indent = 'setlocal indentexpr< indentkeys<'

" Lines that continue a statement stand one level deeper than it.
function! KdxIndent() abort
  let l:line = v:lnum - 1
  if getline(l:line) =~# '\\\s*$'
    return indent(s:Begin(l:line)) + shiftwidth()
  endif
  let l:line = s:Begin(prevnonblank(l:line))
  let l:level = indent(l:line)
  let l:level += getline(l:line) =~# '^\s*[A-Za-z0-9 &._]*:' ? shiftwidth() : 0
  return l:level - (getline(v:lnum) =~# '^\s*END\s*\(#.*\)\?$' ? shiftwidth() : 0)
endfunction

" The first line of the statement that a line belongs to.
function! s:Begin(line) abort
  let l:line = a:line
  while l:line > 1 && getline(l:line - 1) =~# '\\\s*$'
    let l:line -= 1
  endwhile
  return l:line
endfunction
