; How the installer says that something cannot be done: in a message box, or, when
; it is silent, in the file of /LOG=FILE; and in its exit code.

!macro tell TEXT
    StrCpy $hasSaidWhy 1
    ${If} ${Silent}
        Push "${TEXT}"
        !ifdef __UNINSTALL__
            Call un.writeLog
        !else
            Call writeLog
        !endif
    ${Else}
        MessageBox MB_OK|MB_ICONSTOP "${TEXT}"
    ${EndIf}
!macroend

; Before anything was changed. On a page it stays there.
!macro Refuse TEXT CODE
    !insertmacro tell "${TEXT}"
    SetErrorLevel ${CODE}
    ${If} ${Silent}
    ${AndIf} $isInstalling <> 1
        Quit ; Abort would have an exit code of its own here
    ${EndIf}
    Abort
!macroend
!define Refuse "!insertmacro Refuse"

; In the middle of it: what was done is taken back.
!macro Fail TEXT CODE
    !insertmacro tell "${TEXT}"
    SetErrorLevel ${CODE}
    Abort "${TEXT}"
!macroend
!define Fail "!insertmacro Fail"

!macro writeLogFunction UN
    Function ${UN}writeLog
        Exch $0
        Push $1
        Push $2
        ${GetParameters} $1
        ClearErrors
        ${GetOptions} $1 "/LOG=" $2
        ${Unless} ${Errors}
            ClearErrors
            FileOpen $1 $2 w
            ${Unless} ${Errors}
                FileWriteUTF16LE /BOM $1 "$0$\r$\n"
                FileClose $1
            ${EndUnless}
        ${EndUnless}
        ClearErrors
        Pop $2
        Pop $1
        Pop $0
    FunctionEnd

    ; One installer or uninstaller at a time.
    Function ${UN}takeTurn
        System::Call 'kernel32::CreateMutexW(p 0, i 0, w "Global\${PROGRAM}_Setup") p .r0 ?e'
        Pop $1
        ${If} $1 = 183
            ${Refuse} "$(OtherSetup)" ${EXIT_OTHER_SETUP}
        ${EndIf}
    FunctionEnd
!macroend
!insertmacro writeLogFunction ""

; Whatever Chinese Windows speaks, the program speaks Chinese there.
!macro chooseLanguage
    System::Call 'kernel32::GetUserDefaultUILanguage() i .r0'
    IntOp $0 $0 & 0x3FF
    ${If} $0 = 4
        StrCpy $LANGUAGE ${LANG_SIMPCHINESE}
    ${EndIf}
!macroend
