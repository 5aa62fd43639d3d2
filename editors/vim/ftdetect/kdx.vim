autocmd BufRead,BufNewFile *.kdx setfiletype kdx
