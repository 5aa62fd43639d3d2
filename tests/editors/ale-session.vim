" Writes to $OUT what a user of Vim with ALE sees of the language server.
call ale#Queue(0, 'lint_file')
for s:try in range(100)
  if !empty(ale#engine#GetLoclist(bufnr('')))
    break
  endif
  sleep 100m
endfor
let s:codes = map(copy(ale#engine#GetLoclist(bufnr(''))), {_, item -> item.code})
call writefile(['diagnostics: ' . join(s:codes, ', ')], $OUT)
qall!
