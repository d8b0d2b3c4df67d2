# Completion of quillmere for bash.

# Files and folders that begin like the word, or folders alone with -d.
_quillmere_paths() {
    compopt -o filenames 2>/dev/null
    local IFS=$'\n'
    COMPREPLY=($(compgen "${1:--f}" -- "$word"))
}

# The options of a command; those of the editor where there is none.
_quillmere_options() {
    case $1 in
        render) echo --out --size --view --language --state --jobs --verbose ;;
        sheet) echo --out --columns --language --verbose ;;
        compare) echo --out --verbose ;;
        check) echo --format --ignore --fail-on --text-fit --verbose ;;
        export) echo --out --verbose ;;
        import) echo --dry-run --verbose ;;
        *) echo --help --version --verbose ;;
    esac
}

_quillmere() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command= number=0 i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            --out | --size | --view | --language | --state | --jobs | --columns | --format | --ignore | --fail-on)
                ((i++)) ;;
            -*) ;;
            *)
                [[ $number -gt 0 ]] || command=${COMP_WORDS[i]}
                ((number++))
                ;;
        esac
    done
    case $before in
        --out) if [[ $command == @(render|compare) ]]; then _quillmere_paths -d; else _quillmere_paths; fi; return ;;
        --size) COMPREPLY=($(compgen -W "1024x576 1280x720" -- "$word")); return ;;
        --view) COMPREPLY=($(compgen -W "preview receiver" -- "$word")); return ;;
        --state) COMPREPLY=($(compgen -W "1 2 3" -- "$word")); return ;;
        --format) COMPREPLY=($(compgen -W "text json sarif" -- "$word")); return ;;
        --fail-on) COMPREPLY=($(compgen -W "error warning note" -- "$word")); return ;;
        --language | --jobs | --columns | --ignore) return ;;
    esac
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "$(_quillmere_options "$command")" -- "$word"))
        return
    fi
    case $command:$number in
        :0)
            _quillmere_paths -d
            COMPREPLY+=($(compgen -W "render sheet compare check export import" -- "$word"))
            ;;
        compare:[12] | *:1) _quillmere_paths -d ;;
        import:3) _quillmere_paths ;;
    esac
}
complete -F _quillmere quillmere
