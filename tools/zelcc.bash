# Completion of zelcc for bash.
_zelcc() {
    local word=$2 before=$3 command= i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
            convert | list | info | check | bench) command=${COMP_WORDS[i]}; break ;;
        esac
    done
    local words=
    case $command:$before in
        *:--from | *:--to) words=$(zelcc list formats 2>/dev/null | cut -d ' ' -f 1) ;;
        *:--matrix) words='601 709 2020 240m fcc ycgco 709-full yuv' ;;
        *:--range) words='limited full' ;;
        *:--location) words='left center topleft' ;;
        *:--demosaic) words='bilinear ahd' ;;
        *:--dither) words='none bayer floyd-steinberg jarvis stucki' ;;
        *:--gamma) words='forward inverse' ;;
        *:--tone-map) words='maximum mean' ;;
        *:--input-kind | *:--output-kind) words='auto raw y4m png jpeg pnm pfm' ;;
        *:--size | *:--crop | *:--frames | *:--levels | *:--noise | *:--threshold | *:--gamma-range | *:--twist | *:--weights | \
            *:--threads | *:--seconds) return ;;
        list:list) words='formats conversions functions all' ;;
        bench:bench) [[ $word == -* ]] && words='--size --threads --seconds --help' || words=$(zelcc list functions 2>/dev/null | cut -d ' ' -f 1) ;;
        :*) words='convert list info check bench --help --version' ;;
        convert:*)
            [[ $word == -* ]] && words='--from --to --size --crop --frames --input-kind --output-kind --matrix --range --location
                --demosaic --filter --interlaced --progressive --dither --levels --noise --threshold --gamma --gamma-range --tone-map
                --twist --weights --threads --dry-run --quiet --help' ;;
        bench:*) words='--size --threads --seconds --help' ;;
        check:--write) ;;
        check:*) words='--write --sums --help' ;;
    esac
    if [[ $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        compopt -o default
    fi
}
complete -F _zelcc zelcc
