# Completion of velmoorctl's commands, their words and options.

_velmoorctl() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]-}
  local line='--port --axis'
  local words=''
  COMPREPLY=()

  if ((COMP_CWORD == 1)); then
    mapfile -t COMPREPLY < <(compgen -W 'new show import set report info download upload compare diff
      scan monitor alarms send run reset --help --version' -- "$current")
    return
  fi
  case $previous in
    --port)
      mapfile -t COMPREPLY < <(compgen -G '/dev/serial/by-id/*' -- "$current"
        compgen -f -- "${current:-/dev/tty}")
      return
      ;;
    --axis) words='0 1 2 3 4 5 6 7 8 9 A B C D E F' ;;
    --only) words='index zone jog parameters system' ;;
    --paper) words='a4 letter' ;;
    --items) words='PUN PER POS DST RPOS RDST PFB NFB NREF TREF STS IN1 IN2 OUT1 OUT2' ;;
    --sections)
      words='communications system parameters tuning interface flexibleio overtravel homing index jog zone'
      ;;
    --motor-size | --count) return ;;
    --out)
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
  esac
  if [ -z "$words" ] && [[ $current == --* ]]; then
    case $command in
      report) words='--out --sections --paper --motor-size --yes' ;;
      download) words="$line --motor-size --all --new --only --yes" ;;
      upload) words="$line --motor-size --all --only --yes" ;;
      info | compare) words="$line --motor-size" ;;
      scan) words='--port' ;;
      monitor) words="$line --items --count" ;;
      reset) words="$line --yes" ;;
      set) words='--motor-size --yes' ;;
      show | import) words='--motor-size' ;;
      alarms | send | run) words=$line ;;
    esac
  elif [ -z "$words" ]; then
    case $command:$COMP_CWORD in
      show:3) words='index zone jog system parameters' ;;
      import:3) words='index zone jog' ;;
      reset:2) words='all parameters tables index zone jog' ;;
      set:[3-9] | set:1[0-9]) words='system= measure= n1= n2= resolution= units= time= encoder=' ;;
    esac
  fi
  if [ -n "$words" ]; then
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    [[ ${COMPREPLY[0]-} == *= ]] && compopt -o nospace
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  fi
}

complete -o filenames -F _velmoorctl velmoorctl
