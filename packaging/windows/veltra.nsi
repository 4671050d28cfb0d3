; The installer: for the current user, without any question of rights. Built by scripts/package-windows.sh, which gives
;   VERSION            the program's version, three numbers
;   PRODUCT PUBLISHER  the names in "Apps"
;   STAGE              the folder with the files to install
;   FILES              generated: one line for each file and folder, see below
;   OUTPUT             the installer's file
;   SIGN               optional: a command that signs the file it is given; the uninstaller can be signed here only
Target amd64-unicode ; like the program
ManifestDPIAware true
SetCompressor /SOLID lzma
RequestExecutionLevel user

!include MUI2.nsh
!include "${FILES}" ; the macros InstallFiles, RemoveFiles and GotoIfAnyExists, and INSTALLED_KIB

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\VeltraOptimizer"
!define PROGRAM "VeltraOptimizer.exe"
!define UNINSTALLER "UninstallVeltra.exe"
!define SHORTCUT "$SMPROGRAMS\Veltra Optimizer.lnk"
!define ERROR_IN_USE 32
!define ERROR_FILE_EXISTS 80

Name "${PRODUCT}"
OutFile "${OUTPUT}"
!ifdef SIGN
    !uninstfinalize '"${SIGN}" "%1"'
!endif
InstallDir "$LOCALAPPDATA\Programs\Veltra Optimizer"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
BrandingText "${PRODUCT} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "FileDescription" "${PRODUCT} Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "LegalCopyright" "Copyright (C) ${PUBLISHER}"

!define MUI_ICON "veltra.ico"
!define MUI_UNICON "veltra.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "installer.bmp"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAM}"
!insertmacro MUI_PAGE_LICENSE "${STAGE}\LICENSE.txt"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var problem ; why nothing can be done here; empty when nothing speaks against it
Var exitCode ; of the program in that case
Var earlier ; the folder of an installed version; empty when there is none

; A program that runs cannot be replaced: nothing is begun that could only be done by half.
!macro FindRunning FOLDER
    ${If} ${FileExists} "${FOLDER}\${PROGRAM}"
        ClearErrors
        FileOpen $0 "${FOLDER}\${PROGRAM}" a
        ${If} ${Errors}
            StrCpy $problem "Please close ${PRODUCT} first."
            StrCpy $exitCode ${ERROR_IN_USE}
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

; What an earlier version brought is its own uninstaller's to remove; it waits there, instead of copying itself.
!macro RemoveEarlier FOLDER
    ${If} ${FileExists} "${FOLDER}\${UNINSTALLER}"
        ExecWait '"${FOLDER}\${UNINSTALLER}" /S _?=${FOLDER}' $exitCode
        ${If} $exitCode <> 0
            MessageBox MB_OK|MB_ICONSTOP "The version in ${FOLDER} could not be removed." /SD IDOK
            SetErrorLevel $exitCode
            Quit
        ${EndIf}
        Delete "${FOLDER}\${UNINSTALLER}"
        RMDir "${FOLDER}"
    ${EndIf}
!macroend

Function FindProblem
    StrCpy $problem ""
    ReadRegStr $earlier HKCU "${KEY}" "InstallLocation"
    ${If} $earlier != ""
        !insertmacro FindRunning "$earlier"
    ${EndIf}
    !insertmacro FindRunning "$INSTDIR"
    ${If} ${FileExists} "$INSTDIR\${UNINSTALLER}"
        Return
    ${EndIf}
    ; Somebody else's files of the same names would be overwritten now, and removed some day.
    !insertmacro GotoIfAnyExists foreign
    Return
    foreign:
    StrCpy $problem "$INSTDIR holds files of the same names that are not from ${PRODUCT}. Please choose another folder."
    StrCpy $exitCode ${ERROR_FILE_EXISTS}
FunctionEnd

Function CheckFolder
    Call FindProblem
    ${If} $problem != ""
        MessageBox MB_OK|MB_ICONEXCLAMATION "$problem" /SD IDOK
        Abort ; stays on the page
    ${EndIf}
FunctionEnd

!macro StopAtProblem
    ${If} $problem != ""
        MessageBox MB_OK|MB_ICONSTOP "$problem" /SD IDOK
        SetErrorLevel $exitCode
        Quit
    ${EndIf}
!macroend

Section
    Call FindProblem
    !insertmacro StopAtProblem
    ${If} $earlier != ""
        !insertmacro RemoveEarlier "$earlier"
    ${EndIf}
    !insertmacro RemoveEarlier "$INSTDIR"
    !insertmacro InstallFiles
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\${UNINSTALLER}"
    CreateShortcut "${SHORTCUT}" "$INSTDIR\${PROGRAM}"
    WriteRegStr HKCU "${KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${KEY}" "Publisher" "${PUBLISHER}"
    WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM}"
    WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
    WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
    WriteRegDWORD HKCU "${KEY}" "EstimatedSize" ${INSTALLED_KIB}
    WriteRegDWORD HKCU "${KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

; File by file, and folders only when they are empty: what somebody else put there stays.
Section "Uninstall"
    StrCpy $problem ""
    !insertmacro FindRunning "$INSTDIR"
    !insertmacro StopAtProblem
    !insertmacro RemoveFiles
    Delete "$INSTDIR\${UNINSTALLER}"
    Delete "${SHORTCUT}"
    DeleteRegKey HKCU "${KEY}"
    SetOutPath "$TEMP"
    RMDir "$INSTDIR"
SectionEnd
