" Parameter files and definitions by their endings, and a parameter file by a first line that names its definition.
autocmd BufNewFile,BufRead *.opt setfiletype optxv-parameters
" A file of this ending may have got another type by now.
autocmd BufNewFile,BufRead *.def set filetype=optxv-definition
autocmd BufNewFile,BufRead * if getline(1) =~# '^\*\s*optxv:\s*definition\>' | set filetype=optxv-parameters | endif
