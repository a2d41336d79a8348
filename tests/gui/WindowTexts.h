#pragma once

#include <map>
#include <string>
#include <vector>

namespace qvnd::test {

// A text that a window may show, and the control that shows it ("|" and a key: the key that stands
// behind a menu item). A "*" at the end stands for what depends on the machine.
struct StatedText {
    const char* owner;
    const char* text;
};

// Every text of every window, written down from the design. A window shows these and no others.
inline const std::map<std::string, std::vector<StatedText>>& statedTexts() {
    static const std::map<std::string, std::vector<StatedText>> all{
        {"MainForm",
         {
             {"MainForm", "卷宗编制系统"},
             {"st1Panel1", "当前用户： *"},
             {"st1Panel2", "当前工作路径： *"},
             {"st1Panel3", "今天是： *"},
             {"MenuFile", "方案管理(&S)"},
             {"mnuBuild", "方案编辑(&B)"},
             {"MenuExit", "退出(&E)"},
             {"sysWin", "窗口(&W)"},
             {"listWin", "层叠(&C)"},
             {"winA", "横向平铺(&H)"},
             {"sysHelp", "帮助(&H)"},
             {"help1", "内容(&C)"},
             {"help2", "索引(&I)"},
             {"sysAbout", "关于"},
         }},
        {"frmBid",
         {
             {"MainForm", "卷宗编制系统 - [施工组织方案设计]"},
             {"QMdiSubWindow", "施工组织方案设计"},
             {"QToolButton", "添加同级文件夹"},
             {"QToolButton", "添加下级文件夹"},
             {"QToolButton", "添加同级文档"},
             {"QToolButton", "添加下级文档"},
             {"QToolButton", "删除"},
             {"QToolButton", "重命名"},
             {"QToolButton", "浏览文档"},
             {"QToolButton", "复制"},
             {"QToolButton", "粘贴"},
             {"QToolButton", "标书编辑"},
             {"QToolButton", "退出"},
             {"QLabel", "双击文档即可在此预览"},
             {"TabCurrent", "当前施工组织方案"},
             {"OpenPlanInfo", "工程信息(&I)..."},
             {"TabTemplate", "施工方案模板"},
             {"TabTemplate", "用户方案"},
             {"cmdEdit", "施工方案编辑"},
             {"cmdExit", "退出"},
             {"st1Panel1", "当前用户： *"},
             {"st1Panel2", "当前工作路径： *"},
             {"st1Panel3", "今天是： *"},
             {"mnuSys", "方案管理(&S)"},
             {"mnuNew", "新建方案|Ctrl+N"},
             {"mnuDelete", "删除当前方案"},
             {"mnuEdit", "方案编辑  (&E)"},
             {"mnuExit", "退出(&X)"},
             {"mnuSysEdit", "方案编辑(&E)"},
             {"mnuEQFolder", "添加同级文件夹"},
             {"mnuLTFolder", "添加下级文件夹"},
             {"mnuPaste", "粘贴|Ctrl+V"},
             {"mnuBrowseDoc", "浏览文档"},
             {"mnuRename", "重命名|F2"},
             {"mnuEditDelete", "删除|Del"},
             {"mnuSaveTemplate", "存入方案模板"},
             {"mnuWin", "窗口(&W)"},
             {"mnuChongDie", "重叠"},
             {"mnuPingPu", "平铺"},
             {"mnuHelp", "帮助(&H)"},
             {"mnuContent", "内容   (&C)..."},
             {"mnuIndex", "索引   (&I)..."},
             {"mnuAbout", "关于(&A)"},
             {"mnuAddDoc", "添加文档"},
             {"mnuEQDoc", "同级"},
             {"mnuLTDoc", "下级"},
             {"mnuCopy", "复制|Ctrl+C"},
             {"mnuDelTemplate", "删除"},
             {"mnuBroTemplate", "浏览"},
         }},
        {"frmSplash",
         {
             {"frmSplash", "TREL卷宗编制系统"},
             {"Label1", "TREL卷宗编制系统"},
         }},
        {"frmAbout",
         {
             {"frmAbout", "关于 卷宗编制系统"},
             {"lblTitle", "卷宗编制系统——QVND"},
             {"lblVersion", "版本 1.2.3"},
             {"lblDisclaimer",
              "本程序用于编制施工组织方案。生成的文件在递交之前，请由编制人和审批人核对。"},
             {"cmdOK", "确定"},
             {"cmdSysInfo", "系统信息(&S)..."},
         }},
        {"DlgNew",
         {
             {"DlgNew", "新建方案"},
             {"QLabel", "方案名称："},
             {"QLabel", "建设单位："},
             {"QLabel", "施工单位："},
             {"QLabel", "编  制  人："},
             {"QLabel", "审  批  人："},
             {"QLabel", "审批日期："},
             {"QGroupBox", "注释"},
             {"BtnOk", "确定(&O)"},
             {"BtnCancel", "取消(&C)"},
         }},
        {"DlgNewInformation",
         {
             {"DlgNew", "工程信息"},
             {"QLabel", "方案名称："},
             {"QLabel", "建设单位："},
             {"QLabel", "施工单位："},
             {"QLabel", "编  制  人："},
             {"QLabel", "审  批  人："},
             {"QLabel", "审批日期："},
             {"QGroupBox", "注释"},
             {"BtnOk", "确定(&O)"},
             {"BtnCancel", "取消(&C)"},
         }},
        {"dlgAddDocBeside",
         {
             {"dlgAddDoc", "添加同级文件夹"},
             {"QLabel", "文件夹名称(&N)："},
             {"OKButton", "确定(&O)"},
             {"CancelButton", "取消(&C)"},
         }},
        {"dlgAddDocBelow",
         {
             {"dlgAddDoc", "添加下级文件夹"},
             {"QLabel", "文件夹名称(&N)："},
             {"OKButton", "确定(&O)"},
             {"CancelButton", "取消(&C)"},
         }},
        {"MessageBoxOk",
         {
             {"QMessageBox", "施工方案编制"},
             {"qt_msgbox_label", "真的要删除[质量保证]吗？"},
             {"QPushButton", "确定(&O)"},
         }},
        {"MessageBoxOkCancel",
         {
             {"QMessageBox", "施工方案编制"},
             {"qt_msgbox_label", "真的要删除[质量保证]吗？"},
             {"QPushButton", "确定(&O)"},
             {"QPushButton", "取消(&C)"},
         }},
        {"MessageBoxYesNo",
         {
             {"QMessageBox", "施工方案编制"},
             {"qt_msgbox_label", "真的要删除[质量保证]吗？"},
             {"QPushButton", "是(&Y)"},
             {"QPushButton", "否(&N)"},
         }},
    };
    return all;
}

} // namespace qvnd::test
