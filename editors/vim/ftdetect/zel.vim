autocmd BufRead,BufNewFile */levels/*/script.txt setfiletype zel | compiler zelcheck
