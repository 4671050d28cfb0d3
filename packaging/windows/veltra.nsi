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
!include "${FILES}" ; the macros InstallFiles and RemoveFiles, and INSTALLED_KIB

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\VeltraOptimizer"
!define PROGRAM "VeltraOptimizer.exe"
!define UNINSTALLER "Uninstall.exe"
!define SHORTCUT "$SMPROGRAMS\Veltra Optimizer.lnk"
!define ERROR_IN_USE 32

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
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAM}"
!insertmacro MUI_PAGE_LICENSE "${STAGE}\LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A program that runs cannot be replaced: nothing is begun that could only be done by half. Silently: error 32.
!macro StopWhileRunning
    ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
        ClearErrors
        FileOpen $0 "$INSTDIR\${PROGRAM}" a
        ${If} ${Errors}
            MessageBox MB_OK|MB_ICONSTOP "Please close ${PRODUCT} first." /SD IDOK
            SetErrorLevel ${ERROR_IN_USE}
            Quit
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

Section
    !insertmacro StopWhileRunning
    ; What an earlier version brought is its own uninstaller's to remove; it waits there, instead of copying itself.
    ${If} ${FileExists} "$INSTDIR\${UNINSTALLER}"
        ExecWait '"$INSTDIR\${UNINSTALLER}" /S _?=$INSTDIR'
    ${EndIf}
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
    !insertmacro StopWhileRunning
    !insertmacro RemoveFiles
    Delete "$INSTDIR\${UNINSTALLER}"
    Delete "${SHORTCUT}"
    DeleteRegKey HKCU "${KEY}"
    SetOutPath "$TEMP"
    RMDir "$INSTDIR"
SectionEnd
